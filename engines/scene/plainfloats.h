#ifndef ZANT_ENGINES_SCENE_PLAINFLOATS_H
#define ZANT_ENGINES_SCENE_PLAINFLOATS_H

#include <cfenv>

namespace Zant::Engine {

/// For its life the thread calculates as programs begin: rounding to nearest, and no error is trapped. Hosts may have
/// asked for something else, which would end them in a division by zero that is meant, or change a picture.
class PlainFloats {
public:
    PlainFloats() {
        std::fegetenv(&before_);
        std::fesetenv(FE_DFL_ENV);
    }
    ~PlainFloats() { std::fesetenv(&before_); }
    PlainFloats(const PlainFloats&) = delete;
    PlainFloats& operator=(const PlainFloats&) = delete;

private:
    std::fenv_t before_;
};

}  // namespace Zant::Engine

#endif
