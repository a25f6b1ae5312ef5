// The command-line host: drives an engine with command files, checks and converts them, and explains the vocabulary.

#include <cstdio>
#include <exception>

#include "app/commandline.h"
#include "app/outputfile.h"
#include "app/program.h"
#include "app/text.h"
#include "own/streams.h"

namespace Zant::App {
namespace {

int runAndTell(int argc, char** argv) {
    try {
        return runCommandLine(argc, argv);
    } catch (const UsageError& error) {
        complain(std::string("zant: ") + error.what());
        return WrongUsage;
    } catch (const OutputError& error) {
        complain(std::string("zant: ") + error.what());
        return OutputNotWritten;
    } catch (const std::exception& error) {
        // What printing throws is told by the end of standard output.
        if (!std::ferror(stdout)) complain(std::string("zant: ") + error.what());
        return InputHasErrors;
    }
}

}  // namespace

void refuseToReplace(const std::vector<std::string>& inputs, const std::string& output) {
    if (isOneOf(output, inputs)) throw UsageError("--output: " + output + " is one of the files that are read");
}

}  // namespace Zant::App

int main(int argc, char** argv) {
    Zant::Platform::prepareStandardStreams();
    Zant::App::actIfChild({&Zant::App::probing, &Zant::App::rehearsing}, argc, argv);
    const int code = Zant::App::runAndTell(argc, argv);
    if (code == Zant::App::OutputNotWritten) return code;
    return Zant::App::finishStandardOutput() ? code : Zant::App::OutputNotWritten;
}
