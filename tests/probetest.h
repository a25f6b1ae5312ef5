#ifndef ZANT_TESTS_PROBETEST_H
#define ZANT_TESTS_PROBETEST_H

#include "zantprogram.h"

inline const std::string engines = ZANT_TEST_ENGINES;
inline const std::string engineName = "zant3" ZANT_ENGINE_SUFFIX;

/// zant probe, on engine files that a test makes of the good one.
class ProbeFile : public ZantProgram::Test {
protected:
    /// Probes an engine file with this content.
    ZantProgram::Outcome probe(const std::string& content) const {
        write(engineName, content);
        return zant("probe ./");
    }

    /// The same with the good engine, in which a header at a place is changed.
    template <class Header, class Change>
    ZantProgram::Outcome probeChanged(size_t at, const Change& change) const {
        Header header;
        good.copy(reinterpret_cast<char*>(&header), sizeof header, at);
        change(header);
        return probe(
            std::string(good).replace(at, sizeof header, reinterpret_cast<const char*>(&header), sizeof header));
    }

    static void expectFault(const ZantProgram::Outcome& result, const std::string& fault) {
        ZantProgram::expectShown(result, 3, {engineName + ": " + fault});
    }

    const std::string good = ZantProgram::contentOf(engines + "probe/" + engineName);
};

#endif
