// How fast commands are checked: text through the streaming window, blocks from memory.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "language/reader.h"
#include "language/writer.h"

using namespace Zant;
using namespace Zant::Language;

namespace {

/// A scene as a host writes it: declarations, geometry, lists, settings.
const char* const scene =
    "surface matt,diffuse,paint,2;surface gloss,blur2,paint,0.1,1,4,16,0.02;\n"
    "material wall;materialSet wall,color,(0.8,0.8,0.8);materialSet wall,texture,color,wood;\n"
    "lightAdd adaptive,(0,10,0),(1,1,1),(0,-1,0),sky,0.5,16,2;\n"
    "light lamps,point,{(0,1,0),(0,2,0),(0,3,0)},(0.5,0.5,1);\n"
    "instanceAdd \"chair 12\",(1.25,0,-3.5)@<45,0,0>*(1,2,1),clipMap,mask,timeShift,(0,0,1);\n"
    "vertex3d corners,17,{(0.125,0.25,1.0625),(1.5,0.75,1),(1,1,0)};meshAddPoly panel,3,{0,1,2,3};\n"
    "fg gradients,0.5,2;sett imageSampler,qmcAdaptive,2,16,0.01;echo \"frame 12 of \"\"room\"\"\";\n";

class RepeatedText : public TextSource {
public:
    RepeatedText(const std::string& repeated, size_t count) : piece(repeated), left(count) {}
    size_t read(char* into, size_t room) override {
        const size_t count = std::min(left, room / piece.size());
        for (size_t k = 0; k < count; ++k)
            std::memcpy(into + k * piece.size(), piece.data(), piece.size());
        left -= count;
        return count * piece.size();
    }

private:
    const std::string& piece;
    size_t left;
};

std::vector<std::string> sceneIn(TextWriter::Form form) {
    TextReader reader{std::string_view(scene)};
    TextWriter writer(form);
    std::vector<std::string> texts;
    for (Command command; reader.next(command) == ReadResult::Command;)
        texts.emplace_back(writer.write(command));
    return texts;
}

void checkText(benchmark::State& state, TextWriter::Form form) {
    std::string text;
    for (const std::string& command : sceneIn(form))
        text += command + "\n";
    const size_t copies = 16 * 1024 * 1024 / text.size();
    size_t commands = 0;
    for (auto _ : state) {
        RepeatedText source(text, copies);
        TextReader reader(source);
        for (Command command; reader.next(command) == ReadResult::Command;)
            ++commands;
    }
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(copies * text.size()));
    state.SetItemsProcessed(static_cast<int64_t>(commands));
}

void checkBlocks(benchmark::State& state) {
    TextReader textReader{std::string_view(scene)};
    BinaryWriter writer;
    std::vector<std::string> blocks;
    for (Command command; textReader.next(command) == ReadResult::Command;) {
        const auto* block = static_cast<const char*>(writer.write(command));
        blocks.emplace_back(block, writer.size());
    }
    BinaryReader reader;
    Command command;
    size_t bytes = 0, commands = 0;
    for (auto _ : state) {
        for (const std::string& block : blocks) {
            if (reader.read(block.data(), block.size(), command) != ReadResult::Command)
                state.SkipWithError("a block is not understood");
            bytes += block.size();
            ++commands;
        }
    }
    state.SetBytesProcessed(static_cast<int64_t>(bytes));
    state.SetItemsProcessed(static_cast<int64_t>(commands));
}

BENCHMARK_CAPTURE(checkText, plain, TextWriter::Form::Plain)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(checkText, quick, TextWriter::Form::Quick)->Unit(benchmark::kMillisecond);
BENCHMARK(checkBlocks);

}  // namespace

BENCHMARK_MAIN();
