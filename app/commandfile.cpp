#include "app/commandfile.h"

#include <fmt/core.h>

namespace Zant::App {

CommandFile::CommandFile(const std::string& fileName) : input_(fileName), blockFile_(input_) {
    if (input_.encoding() == InputFile::Encoding::Text)
        text_ = std::make_unique<TextReader>(static_cast<TextSource&>(input_));
}

ReadResult CommandFile::next(Command& command) {
    if (ended_) return ReadResult::End;
    if (input_.encoding() == InputFile::Encoding::Blocks) return nextBlock(command);
    if (input_.encoding() == InputFile::Encoding::Wide) {
        ended_ = true;
        failure_ = input_.wideText();
        return ReadResult::Error;
    }
    const ReadResult result = text_->next(command);
    if (result == ReadResult::Error) failure_ = text_->diagnostic();
    return result;
}

ReadResult CommandFile::nextBlock(Command& command) {
    ReadResult result = blockFile_.next();
    if (result == ReadResult::Error) failure_ = blockFile_.diagnostic();
    if (result != ReadResult::Command) return result;
    result = blocks_.read(blockFile_.block().data(), blockFile_.block().size(), command);
    if (result == ReadResult::Command) return result;
    failure_ =
        inFile(result == ReadResult::End ? Diagnostic{{}, "the block holds no command", ""} : blocks_.diagnostic());
    return ReadResult::Error;
}

Diagnostic CommandFile::inFile(Diagnostic mistake) const {
    if (!text_) mistake.position.offset += blockFile_.start();
    return mistake;
}

std::string CommandFile::whereIs(const Command& command) const {
    return text_ ? fmt::format("line {}", command.position.line) : fmt::format("byte {}", blockFile_.start());
}

}  // namespace Zant::App
