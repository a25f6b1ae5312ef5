// The loopback engine, loaded as a host loads it.

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "client/encoding/commandbinarybuffer.h"
#include "client/encoding/commandtextbuffer.h"
#include "client/symbols/bitmapsymbol.h"
#include "client/symbols/mesh.h"
#include "client/symbols/valuesymbols.h"
#include "client/symbols/vertexmap.h"
#include "loopbackhost.h"

namespace Zant::Tests {
namespace {

TEST(Loopback, SpeaksThroughTheListenerAndClosesItsStream) {
    TextCollector text;
    Library library(ZANT_LOOPBACK_DIR);
    Instance* instance = library.createInstanceWithListner(&text);
    ASSERT_NE(instance, nullptr) << library.getLoadError();
    EXPECT_EQ(text.opened, 0);
    EXPECT_EQ(instance->parse("echo \"one\";echo \"two\nthree\"; echo;", nullptr, ParseText), 0);
    EXPECT_EQ(text.take(), "one\ntwo\nthree\n\n");
    EXPECT_EQ(text.opened, 1);
    library.releaseInstance(instance);
    EXPECT_EQ(text.closed, 1);
    EXPECT_FALSE(library.isLoaded());
}

TEST(Loopback, NamesTheMistakeAndGoesOn) {
    struct Row {
        const char* commands;
        int code;
        const char* text;
    };
    const Row rows[] = {
        {"lihgt;", 1, "Error: scene.txt:1:1: "},
        {"echo 1;", 1, "Error: scene.txt:1:"},
        {"\n\n  var;echo \"on\";", 1, "Error: scene.txt:3:6: "},
        {"delete nobody;", 2, "Error: scene.txt:1:8: there is no object 'nobody'"},
        {"var v; \n bitmapOp v,show;", 3, "Error: scene.txt:2:11: 'v' is no bitmap"},
        {"bitmap b,charGray,(100000,4);", 4, "Error: scene.txt:1:19: a bitmap cannot have the size"},
        {"include \"no such file\";", 5, "Error: scene.txt:1:9: cannot read the file 'no such file'"},
        {"include \"/\";", 5, "Error: scene.txt:1:9: cannot read the file '/'"},
    };
    Host host;
    for (const Row& row : rows) {
        EXPECT_EQ(host.parse(row.commands, "scene.txt"), row.code) << row.commands;
        const std::string text = host.text.take();
        EXPECT_EQ(text.substr(0, std::strlen(row.text)), row.text) << row.commands;
        EXPECT_EQ(text.find("on\n") != std::string::npos, std::strstr(row.commands, "\"on\"") != nullptr);
    }
}

}  // namespace
}  // namespace Zant::Tests
