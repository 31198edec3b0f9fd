#pragma once

#include <MelkarCommon/api.h>

#include <string_view>

/// @file
/// Which step of a draw cycle a thread is in, for who asks what painted something.

namespace melkar {

/// A step by its names, which must stay where they are. Empty ones are not known.
struct StepName {
    std::string_view owner;     ///< the class whose operation it is
    std::string_view operation; ///< without the class
};

/// The step that this thread is in, the innermost one; null outside of all.
MELKAR_API const StepName* RunningStep();

namespace detail {

MELKAR_API void SetRunningStep(const StepName* step);

/// The names of an operation, as the compiler writes them.
template <auto Operation> constexpr StepName NameOfOperation() {
    std::string_view text = __PRETTY_FUNCTION__; // "... [... Operation = &CBarGraph::DrawDate; ...]"
    constexpr std::string_view kBefore = "Operation = &";
    text.remove_prefix(text.find(kBefore) + kBefore.size());
    text = text.substr(0, text.find_first_of(";]"));
    const std::size_t between = text.rfind("::");
    return {text.substr(0, between), text.substr(between + 2)};
}

} // namespace detail

/// While it lives, what this thread draws is of the step that it entered last.
class StepScope {
public:
    StepScope() : m_outer(RunningStep()) {}
    ~StepScope() { detail::SetRunningStep(m_outer); } ///< back in the outer one
    StepScope(const StepScope&) = delete;
    StepScope& operator=(const StepScope&) = delete;

    void Enter(const StepName* step) { detail::SetRunningStep(step); } ///< it must stay where it is; null: none

private:
    const StepName* m_outer;
};

} // namespace melkar
