// What the program reads and writes: files of every kind, whole or not at all. Devices, pipes, links and modes make it
// a test for Linux; program_test.cpp has what is the same everywhere.

#include "shell.h"

namespace {

namespace fs = std::filesystem;

using namespace ZantProgram;

constexpr const char* scene = "var a,1;\nvar b,2;\n";

class ProgramFiles : public ShellTest {
protected:
    ProgramFiles() { write("scene", scene); }

    /// Files that the program left beside its output.
    size_t leftovers() const {
        size_t count = 0;
        for (const auto& entry : fs::directory_iterator(folder))
            count += entry.path().filename().string()[0] == '.';
        return count;
    }
};

TEST_F(ProgramFiles, OutputsChangeAsAWholeOrNotAtAll) {
    const std::string old = "old\n", quick = "[18],a,1;\n[18],b,2;\n", text = scene, bad = "about;\nlihgt;\n";
    write("bad", bad);
    const struct {
        const char* line;
        int code;
        std::string output;  // what "out" then holds
    } rows[] = {
        {"zant convert --to quick -o out scene", 0, quick},
        {"zant convert --to quick -o out - <scene", 0, quick},
        {"cp scene out; zant convert --to quick -o out out", 0, quick},
        {"cp scene out; zant convert --to quick -o out - <out", 0, quick},
        {"zant convert --to quick -o out missing", 1, old},
        {"zant convert --to quick -o out scene missing", 1, old},
        {"zant convert --to text -o out bad", 1, "about;\n"},
        {"cp bad out; zant convert --to text -o out out", 1, bad},
        {"zant decode -o out missing", 1, old},
        {"cp scene out; zant report -o out out", 2, text},
        {"cp scene out; zant decode -o out ./out", 2, text},
        {"zant report -o out missing", 1, old},
        // The thread sanitizer writes a file of its own at the start, unless its folder is missing.
        {"(ulimit -f 0; TEST_TMPDIR=/missing zant convert --to quick -o out scene)", 4, old},
        {"sleep 1 | zant convert --to text -o out - & sleep 0.3; kill $!; wait $!; [ $? = 143 ]", 0, old},
        {"zant convert --to text -o /dev/stdout scene >out", 0, text},
        {"zant convert --to text -o - scene >out", 0, text},
        {"mkfifo pipe; cat pipe >out & zant convert --to text -o pipe scene; wait; [ -p pipe ]", 0, text},
    };
    for (const auto& row : rows) {
        write("out", old);
        const Outcome result = shell(row.line);
        EXPECT_EQ(result.code, row.code) << result;
        EXPECT_EQ(content("out"), row.output) << result;
        EXPECT_EQ(leftovers(), 0u) << result;
    }
}

TEST_F(ProgramFiles, OutputsFollowLinksAndKeepTheMode) {
    fs::create_directory(folder + "/below");
    fs::create_directory(folder + "/links");
    write("below/real", "old\n");
    fs::permissions(folder + "/below/real", fs::perms(0604));
    fs::create_symlink("../below/real", folder + "/links/link");
    fs::create_symlink("link", folder + "/links/second");
    fs::create_symlink("../below/new", folder + "/links/dangling");
    const std::string convert = "zant convert --to text scene -o links/";
    EXPECT_EQ(shell("umask 027; " + convert + "second && " + convert + "dangling").code, 0);
    for (const auto& [name, mode] : {std::pair("below/real", fs::perms(0604)), {"below/new", fs::perms(0640)}}) {
        EXPECT_EQ(content(name), scene) << name;
        EXPECT_EQ(fs::status(folder + "/" + name).permissions(), mode) << name;
    }
    for (const char* name : {"link", "second", "dangling"})
        EXPECT_TRUE(fs::is_symlink(folder + "/links/" + name)) << name;
    EXPECT_EQ(shell("zant convert --to text -o none/new scene").code, 4);
    EXPECT_EQ(shell("zant convert --to text -o below scene").code, 4);
    EXPECT_EQ(shell("zant convert --to text -o missing/../new missing").code, 4);
    EXPECT_EQ(shell("zant convert --to text -o new missing").code, 1);
    EXPECT_FALSE(fs::exists(folder + "/new"));
}

TEST_F(ProgramFiles, EverySubcommandNoticesAFullDisk) {
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "this platform has no full device";
    for (const std::string line :
         {"--help >", "--version >", "check scene >", "check --json missing >", "forms light >", "forms --json fg >",
          "convert --to binary scene >", "decode scene >", "run examples >", "report scene >", "reference below >",
          "convert --to text scene -o ", "report scene -o ", "decode scene -o "}) {
        write("examples", "about;\n");
        const Outcome result = shell("zant " + line + "/dev/full");
        EXPECT_EQ(result.code, 4) << result;
        EXPECT_EQ(countOf("cannot be written", result.output), 1u) << result;
    }
    EXPECT_EQ(shell("zant reference scene/below").code, 4);
    EXPECT_EQ(shell("zant reference --header scene below").code, 1);
    EXPECT_EQ(shell("zant check scene >&-").code, 4);
}

TEST_F(ProgramFiles, EverySubcommandReadsEveryKindOfInput) {
    constexpr char zeros[] = "var a,1;\n  var b,\0 2;\nvar c,3;\0;\nlihgt;\nvar d,4;";
    const std::string zero(zeros, sizeof zeros - 1);
    const std::string wide("\xFF\xFEv\0a\0r\0", 8), wideBare("v\0a\0r\0 \0a\0", 10), wider("v\0\0\0a\0\0\0", 8);
    const struct {
        std::string input;
        int code;
        std::vector<std::string> places;  // of the mistakes
    } rows[] = {
        {"", 0, {}},
        {"echo \"" + std::string(3000000, 'x') + "\";" + std::string(1000000, ' ') + "about;", 0, {}},
        {"\xEF\xBB\xBF"
         "about;\n",
         0,
         {}},
        {std::string(5000, '\0'), 1, {"byte 0: no block begins here"}},
        {"echo \"\xFF\xC3(\xED\xA0\x80\xF8\";\nechø;\n", 1, {":2:1:"}},
        {"echo \"never closed;\nabout;\n", 1, {":1:6:"}},
        {std::string("about\0\0\0;", 9), 1, {":1:6: a zero byte"}},
        {wide, 1, {":1:1: this is text in UTF-16"}},
        {wideBare, 1, {":1:1: this is text in UTF-16"}},
        {wider, 1, {":1:1: this is text in UTF-32"}},
        {zero, 1, {":2:9: a zero byte", ":3:9: a zero byte", ":4:1: unknown command 'lihgt'"}},
    };
    for (const auto& row : rows) {
        write("in", row.input);
        for (const std::string line : {"check in", "run in", "convert --to text in", "convert --to binary in",
                                       "check - <in", "run - <in", "cat in | zant run -", "decode in", "report in"}) {
            const Outcome result = shell((line.rfind("cat", 0) == 0 ? "" : "zant ") + line);
            EXPECT_EQ(result.code, row.code) << result;
            for (const std::string& place : row.places)
                EXPECT_EQ(countOf(place, result.output), 1u) << place << "\n" << result;
        }
    }
    const Outcome values = zant("run --value a --value d in");
    EXPECT_EQ(countOf("a = 1\nd = 4\n", values.output), 1u) << "those around a zero byte arrive: " << values;
}

TEST_F(ProgramFiles, RunSendsBlocksAsBlocks) {
    EXPECT_EQ(shell("zant convert --to binary -o blocks scene").code, 0);
    EXPECT_EQ(shell("cat blocks | zant run --value b -").output, "b = 2\n");
    std::string blocks = content("blocks");
    const size_t first = static_cast<unsigned char>(blocks[0]);
    std::string foreign = blocks;
    foreign[8] = 119;  // no command has this number
    std::string endless = blocks;
    endless[first - 8] = 0;
    const struct {
        std::string input;
        std::string shown;
    } rows[] = {
        {blocks + foreign, "in: byte " + std::to_string(blocks.size()) + ": the engine refuses this block"},
        {endless, "in: byte 0: the block has no end"},
        {blocks + blocks.substr(0, 20), "the block is cut off"},
        {blocks + "help fg;", "in: byte " + std::to_string(blocks.size()) + ": no block begins here"},
    };
    for (const auto& row : rows) {
        write("in", row.input);
        const Outcome result = zant("run --value b in");
        EXPECT_EQ(result.code, 1) << result;
        EXPECT_EQ(countOf(row.shown, result.output), 1u) << row.shown << "\n" << result;
        EXPECT_EQ(countOf("b = 2\n", result.output), 1u) << "the others are sent: " << result;
    }
    write("in", blocks + foreign);
    const std::string place = "in: byte " + std::to_string(blocks.size() + 8) + ": ";
    EXPECT_EQ(countOf(place, shell("zant check in").output), 1u) << "the word is the second of its block";
    EXPECT_EQ(countOf("byte " + std::to_string(first) + ": var b,2;", shell("zant decode blocks").output), 1u);
}

TEST_F(ProgramFiles, PlacesInLargeFilesCountFromTheirStart) {
    const struct {
        const char* front;  // of each command, in front of its number
        const char* after;
    } rows[] = {
        {"var a,", ";\n"},
        {"var a,", "; "},
        {"string a,\"",
         "; what ends a command stands in a text,\nwith most of it behind, so that a cut there is likely\";\r\n"},
    };
    for (const auto& row : rows) {
        std::string text;
        int number = 1000000;
        while (text.size() < 9000000)
            text += row.front + std::to_string(++number) + row.after;
        const size_t column = text.size() - (text.rfind('\n') + 1) + 1;
        const std::string place =
            "in:" + std::to_string(countOf("\n", text) + 1) + ":" + std::to_string(column) + ": unknown command";
        write("in", text + "lihgt;");
        const Outcome result = shell("zant run --value a in");
        EXPECT_EQ(countOf("Error: ", result.output), 1u) << result.output.substr(0, 500);
        EXPECT_EQ(countOf(place, result.output), 1u) << place << "\n" << result.output.substr(0, 500);
        EXPECT_EQ(countOf("a = " + std::to_string(number), result.output), 1u) << row.front;
        EXPECT_EQ(countOf(place, shell("zant check in").output), 1u) << "the same place";
    }
    // The zero byte has been seen already when the commands in front of it are sent.
    std::string text;
    for (int line = 1; line < 400000; ++line)
        text += "var a,1;\n";
    write("in", text + "echo \"" + '\0' + std::string(2000000, 'x') + "\";\nvar z,3;\n");
    EXPECT_EQ(shell("zant run --value z in").output,
              "in:400000:7: a zero byte: the command that holds it is left out\nz = 3\n");
}

TEST_F(ProgramFiles, TerminalsAreGivenNoControlCharacters) {
    if (shell("command -v script >/dev/null").code != 0) GTEST_SKIP() << "there is no script command";
    write("in", "echo \"\x1B[2Jgr\xC3\xBC\xC3\x9F\xFF\";\nstring s,\"\x1B\";\n\x1Bhgt;\n");
    for (const std::string line :
         {"run --value s in", "convert --to text in", "decode in", "report in", "convert --to binary in"}) {
        const std::string shownThere = shell("script -qec 'zant " + line + "' /dev/null </dev/null").output;
        EXPECT_EQ(countOf("\x1B", shownThere) + countOf("\xFF", shownThere), 0u) << line;
        EXPECT_GT(countOf("\\x1B", shownThere), 0u) << line << shownThere;
    }
    EXPECT_EQ(shell("zant convert --to text in 2>/dev/null").output,
              content("in").substr(0, content("in").find("\x1Bhgt")));
}

TEST_F(ProgramFiles, CheckFollowsIncludesAndWritesJson) {
    fs::create_directory(folder + "/below");
    write("top", "include \"below/one\";\ninclude \"below/one\";\ninclude \"none\";\ninclude \"/dev/zero\";\n");
    write("below/one", "include \"two\";\nlihgt;\n");
    write("below/two", "about;\ninclude \"../top\";\n\"\xFF\x1B\";\n");
    EXPECT_EQ(shell("zant check top").code, 0);
    const Outcome result = shell("zant check --includes --json top below/one missing");
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(countOf("\n", result.output), 6u) << result.output;
    for (const char* line :
         {R"({"file":"below/two","offset":7,"line":2,"column":1,"message":"the file '../top' includes itself"})",
          R"({"file":"below/one","offset":15,"line":2,"column":1,"message":"unknown command 'lihgt')",
          R"(did you mean 'light'?","suggestion":"light"})",
          R"({"file":"top","offset":42,"line":3,"column":1,"message":"cannot read the file 'none'"})",
          R"("message":"cannot read the file '/dev/zero'"})",
          R"({"file":"missing","message":"missing: No such file or directory"})"})
        EXPECT_EQ(countOf(line, result.output), 1u) << line << "\n" << result.output;
    EXPECT_EQ(countOf("top: 4 commands, 2 mistakes\n", shell("zant check --includes top").output), 1u);
    EXPECT_EQ(countOf("below/one: 2 commands, 1 mistake\n", shell("zant check --includes top").output), 1u);
    for (int depth = 0; depth < 17; ++depth)
        write("deep" + std::to_string(depth), "include \"deep" + std::to_string(depth + 1) + "\";\n");
    write("deep17", "about;\n");
    for (const int code : {1, 0}) {  // the engine has the same limit
        EXPECT_EQ(shell("zant check --includes deep" + std::to_string(1 - code)).code, code);
        EXPECT_EQ(shell("zant run deep" + std::to_string(1 - code)).code, code);
    }
    EXPECT_EQ(shell("zant forms --json 'fg gradients'").output.substr(0, 56),
              R"({"command":"fg","number":46,"group":"rendering","notatio)");
}

}  // namespace
