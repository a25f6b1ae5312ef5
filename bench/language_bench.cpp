// How fast commands are read: text through the streaming window, blocks from memory. An item is a byte.
#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "bench/contest.h"
#include "language/reader.h"
#include "language/writer.h"

using namespace Zant;
using namespace Zant::Language;

namespace {

constexpr size_t textSize = 1 << 20;  // much more than the window
constexpr size_t blockPasses = 200;

/// A scene as a host writes it: declarations, geometry, lists, settings.
const char* const scene =
    "surface matt,diffuse,paint,2;surface gloss,blur2,paint,0.1,1,4,16,0.02;\n"
    "material wall;materialSet wall,color,(0.8,0.8,0.8);materialSet wall,texture,color,wood;\n"
    "lightAdd adaptive,(0,10,0),(1,1,1),(0,-1,0),sky,0.5,16,2;\n"
    "light lamps,point,{(0,1,0),(0,2,0),(0,3,0)},(0.5,0.5,1);\n"
    "instanceAdd \"chair 12\",(1.25,0,-3.5)@<45,0,0>*(1,2,1),clipMap,mask,timeShift,(0,0,1);\n"
    "vertex3d corners,17,{(0.125,0.25,1.0625),(1.5,0.75,1),(1,1,0)};meshAddPoly panel,3,{0,1,2,3};\n"
    "fg gradients,0.5,2;sett imageSampler,qmcAdaptive,2,16,0.01;echo \"frame 12 of \"\"room\"\"\";\n";

/// A long text that hands out what is asked for, as a file would.
class Repeated : public TextSource {
public:
    explicit Repeated(const std::string& text) : text_(text) {}
    size_t read(char* into, size_t room) override {
        const size_t count = std::min(room, text_.size() - at_);
        std::memcpy(into, text_.data() + at_, count);
        at_ += count;
        return count;
    }

private:
    const std::string& text_;
    size_t at_ = 0;
};

/// A mesh as a host writes it: points with six decimals, polygons of whole numbers.
std::string mesh() {
    std::string text;
    char line[200];
    for (int k = 0; k < 100; ++k) {
        const double a = 0.37 * k, b = 0.011 * k;
        std::snprintf(line, sizeof line, "vertex3d corners,%d,(%.6f,%.6f,%.6f);\n", k, 3.1 * a, b - 0.5, 17.0 - a * b);
        text += line;
        std::snprintf(line, sizeof line, "meshAddPoly panel,1,{%d,%d,%d,%d};\n", k, k + 1, k + 102, k + 101);
        text += line;
    }
    return text;
}

std::string longTextIn(TextWriter::Form form, std::string_view text) {
    std::string once, whole;
    TextReader reader{text};
    TextWriter writer(form);
    for (Command command; reader.next(command) == ReadResult::Command;)
        once.append(writer.write(command)).append("\n");
    while (whole.size() < textSize)
        whole += once;
    return whole;
}

std::vector<std::string> blocksOfScene() {
    TextReader reader{std::string_view(scene)};
    BinaryWriter writer;
    std::vector<std::string> blocks;
    for (Command command; reader.next(command) == ReadResult::Command;) {
        const auto* const block = static_cast<const char*>(writer.write(command));
        blocks.emplace_back(block, writer.size());
    }
    return blocks;
}

void readText(const char* title, TextWriter::Form form, std::string_view of) {
    const std::string text = longTextIn(form, of);
    Contest contest(title, text.size());
    contest.ours("TextReader", [&] {
        Repeated source(text);
        TextReader reader(source);
        for (Command command; reader.next(command) == ReadResult::Command;)
            keep(command);
    });
    std::string copy(text.size(), ' ');
    contest.aside("limit: memcpy", [&] {
        std::memcpy(copy.data(), text.data(), text.size());
        keep(*copy.data());
    });
    contest.run();
}

void readBlocks() {
    const std::vector<std::string> blocks = blocksOfScene();
    size_t size = 0;
    for (const std::string& block : blocks)
        size += block.size();
    BinaryReader reader;
    Command command;
    Contest contest("reading blocks", size * blockPasses);
    contest.ours("BinaryReader", [&] {
        for (size_t pass = 0; pass < blockPasses; ++pass) {
            for (const std::string& block : blocks) {
                reader.read(block.data(), block.size(), command);
                keep(command);
            }
        }
    });
    contest.run();
}

}  // namespace

int main() {
    readText("reading plain text", TextWriter::Form::Plain, scene);
    readText("reading plain text, a mesh", TextWriter::Form::Plain, mesh());
    readText("reading quick text", TextWriter::Form::Quick, scene);
    readBlocks();
}
