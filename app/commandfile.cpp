#include "app/commandfile.h"

#include <fmt/core.h>

namespace Zant::App {

CommandFile::CommandFile(const std::string& fileName) : input(fileName), blockFile(input) {
    if (input.encoding() == InputFile::Encoding::Text)
        text = std::make_unique<TextReader>(static_cast<TextSource&>(input));
}

ReadResult CommandFile::next(Command& command) {
    if (ended) return ReadResult::End;
    if (input.encoding() == InputFile::Encoding::Blocks) return nextBlock(command);
    if (input.encoding() == InputFile::Encoding::Wide) {
        ended = true;
        failure = input.wideText();
        return ReadResult::Error;
    }
    const ReadResult result = text->next(command);
    if (result == ReadResult::Error) failure = text->diagnostic();
    return result;
}

ReadResult CommandFile::nextBlock(Command& command) {
    ReadResult result = blockFile.next();
    if (result == ReadResult::Error) failure = blockFile.diagnostic();
    if (result != ReadResult::Command) return result;
    result = blocks.read(blockFile.block().data(), blockFile.block().size(), command);
    if (result == ReadResult::Command) return result;
    failure =
        inFile(result == ReadResult::End ? Diagnostic{{}, "the block holds no command", ""} : blocks.diagnostic());
    return ReadResult::Error;
}

Diagnostic CommandFile::inFile(Diagnostic mistake) const {
    if (!text) mistake.position.offset += blockFile.start();
    return mistake;
}

std::string CommandFile::whereIs(const Command& command) const {
    return text ? fmt::format("line {}", command.position.line) : fmt::format("byte {}", blockFile.start());
}

}  // namespace Zant::App
