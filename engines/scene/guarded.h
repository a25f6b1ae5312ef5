#ifndef ZANT_ENGINES_SCENE_GUARDED_H
#define ZANT_ENGINES_SCENE_GUARDED_H

namespace Zant::Engine {

/// Runs the work of a table slot. No exception leaves the engine: the host is another program, perhaps in another
/// language.
/// @return what the work answers, or the failure when it ends with an exception.
template <class Answer, class Work>
Answer guarded(Answer failure, Work work) noexcept {
    try {
        return work();
    } catch (...) {
        return failure;
    }
}

/// The same for work without an answer.
template <class Work>
void guarded(Work work) noexcept {
    try {
        work();
    } catch (...) {
    }
}

}  // namespace Zant::Engine

#endif
