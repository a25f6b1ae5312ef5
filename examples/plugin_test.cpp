// A plug-in's own test, without the engine and without a test framework: are the right commands sent?
//
// usage: plugin_test LOOPBACK_DIRECTORY
// Exit codes: 0 fine, 1 the commands differ, 2 wrong usage, 3 the engine did not load.

#include <cstdio>
#include <stdexcept>

#include "client/zant.h"
#include "testkit/loopbackengine.h"

namespace {

/// What is tested: the part of a plug-in that sends the quality settings of its host.
void exportQuality(Zant::Instance* instance, double gradients, int samples) {
    Zant::Prototyper prototyper(instance);
    Zant::Protos* p = prototyper.protos();
    sett3_imageSampler_qmcAdaptive(p, 2, samples, 0.01);
    if (gradients > 0) fg2_gradients(p, gradients, 2);
}

/// @return 0 when the check has passed, otherwise 1 after printing what is wrong.
int report(const char* test, const Zant::Testkit::Result& result) {
    std::printf("plugin_test: %s: %s\n", test, result ? "fine" : result.message().c_str());
    return result ? 0 : 1;
}

int testQuality(const char* loopbackDirectory) {
    const Zant::Testkit::ContractWatch watch;
    int failures = 0;
    {
        Zant::Testkit::LoopbackEngine engine(loopbackDirectory);
        Zant::Instance* instance = engine.library().createInstance();
        exportQuality(instance, 0.5, 16);
        failures += report("with final gathering", engine.log().check(R"(
            sett imageSampler,qmcAdaptive,2,16,0.01;
            fg gradients,0.5,2;
        )"));
        engine.log().forget();
        exportQuality(instance, 0, 4);
        failures += report("without", engine.log().check("sett imageSampler,qmcAdaptive,2,4,0.01;"));
    }
    return failures + report("the contract", watch.check());
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: plugin_test LOOPBACK_DIRECTORY\n");
        return 2;
    }
    try {
        return testQuality(argv[1]) == 0 ? 0 : 1;
    } catch (const std::runtime_error& error) {
        std::fprintf(stderr, "plugin_test: %s\n", error.what());
        return 3;
    }
}
