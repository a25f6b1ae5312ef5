// A unit test of an exporter, without the engine and without a test framework: are the right commands sent, and is
// nothing left over after a cancel or a failure?
//
// usage: exporter_test LOOPBACK_DIRECTORY
// Exit codes: 0 fine, 1 a test has failed, 2 wrong usage, 3 the engine did not load.

#include <cstdio>
#include <stdexcept>

#include "exporter.h"
#include "testkit/commandlog.h"

namespace {

struct row {
    const char* test;
    const char* fault;  // of the loopback engine
    exporter::progress tell;
    exporter::result ends;
    const char* commands;  // what the engine has carried out then
};

const row rows[] = {
    {"all balls", "", [](std::size_t, std::size_t) { return true; }, exporter::result::done, R"(
        color paint,(0.8,0.75,0.7);
        shape Ball_x201,sphere,(1,0,0),0.5;
        shape Ball_x202,sphere,(2,0,0),0.25;
    )"},
    {"a cancel", "", [](std::size_t done, std::size_t) { return done < 1; }, exporter::result::cancelled, R"(
        color paint,(0.8,0.75,0.7);
        shape Ball_x201,sphere,(1,0,0),0.5;
        delete Ball_x201;
        delete paint;
    )"},
    {"a failure", "fail-command=2", [](std::size_t, std::size_t) { return true; }, exporter::result::failed, R"(
        color paint,(0.8,0.75,0.7);
        delete paint;
    )"},
};

/// @return whether the test has passed; prints what is wrong
bool passes(const row& row, const std::string& directory) {
    const Zant::Testkit::LoopbackFault fault(row.fault);
    const Zant::Testkit::CommandLog log(directory);  // both before the engine is loaded
    zant::session session(log.engineDirectory());
    zant::scene scene(session);
    exporter tested(scene);
    const bool ended_right =
        tested.run({{"Ball 1", {1, 0, 0}, 0.5}, {"Ball 2", {2, 0, 0}, 0.25}}, row.tell) == row.ends;
    scene.clear();  // what waits for it is deleted now
    const Zant::Testkit::Result sent = log.check(row.commands);
    const std::string message = !ended_right ? "another end than expected" : sent ? "fine" : sent.message();
    std::printf("exporter_test: %s: %s\n", row.test, message.c_str());
    return ended_right && sent;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: exporter_test LOOPBACK_DIRECTORY\n");
        return 2;
    }
    try {
        int failures = 0;
        for (const row& row : rows)
            failures += passes(row, argv[1]) ? 0 : 1;
        return failures == 0 ? 0 : 1;
    } catch (const std::runtime_error& error) {
        std::fprintf(stderr, "exporter_test: %s\n", error.what());
        return 3;
    }
}
