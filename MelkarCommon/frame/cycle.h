#pragma once

#include <MelkarCommon/frame/results.h>
#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/host_directory.h>
#include <MelkarCommon/platform/page_words.h>
#include <MelkarCommon/platform/running_step.h>

#include <cstddef>
#include <cstdint>
#include <variant>

/// @file
/// A draw cycle as a table of steps, which reads like the list of what one sees, and the one way to run it.
///
/// @code{.cpp}
/// class CThermometer : public CGraph {
/// public:
///     using CGraph::CGraph;
///     long Draw(CRect area, char* path) override { return melkar::RunCycle(*this, Cycle::steps, area, path); }
///     virtual long DrawColumn() { return 0; }
///     virtual long DrawScale() { return 0; }
///
/// private:
///     struct Cycle : melkar::Steps<CThermometer> {
///         static constexpr Step steps[] = {
///             Do<&G::ReadDataFile>, {Do<&G::BeginCycle>, Needed}, {Do<&G::DrawNoRecordsMessage>, LastIfPainted},
///             Do<&G::FillCanvas>,   Do<&G::DrawColumn>,           Do<&G::DrawScale>,
///         };
///     };
/// };
/// @endcode
///
/// The copy at the end of a cycle is no step: it is made once, whatever the table says.

namespace melkar {

/// What a host gives to a cycle.
struct CycleInput {
    CRect area;           ///< where the graph stands, device units
    char* path = nullptr; ///< of the data file
};

/// What a step's result means to the cycle, where it isn't 0.
enum class StepResult : std::uint8_t {
    Ignored,       ///< nothing: the cycle goes on
    Needed,        ///< it is the cycle's result; nothing more is painted and nothing copied
    LastIfPainted, ///< a message stands in for the steps that follow
};

namespace detail {
/// An operation that tells its name.
template <auto Operation> struct Named {};
} // namespace detail

/// One step: an operation of the class that takes nothing, the rectangle or the path. Virtual ones run as the object's
/// class overrides them.
template <class Graph> class Step {
    using Result = long (Graph::*)();
    using IntResult = int (Graph::*)();
    using NoResult = void (Graph::*)();
    using OnArea = long (Graph::*)(const CRect& area);
    using OfFile = long (Graph::*)(char* path);
    static constexpr StepResult Ignored = StepResult::Ignored;

public:
    /// @name Operations
    /// @{

    /// The step that calls it, without a name; implicit, for a table lists operations.
    constexpr Step(Result step, StepResult meaning = Ignored) : m_operation(step), m_meaning(meaning) {}    // NOLINT
    constexpr Step(IntResult step, StepResult meaning = Ignored) : m_operation(step), m_meaning(meaning) {} // NOLINT
    constexpr Step(NoResult step) : m_operation(step), m_meaning(Ignored) {}                                // NOLINT
    constexpr Step(OnArea step, StepResult meaning = Ignored) : m_operation(step), m_meaning(meaning) {}    // NOLINT
    constexpr Step(OfFile step, StepResult meaning = Ignored) : m_operation(step), m_meaning(meaning) {}    // NOLINT
    /// The same with the name of the operation: `Do<&G::DrawScale>` of `Steps`.
    template <auto Operation> constexpr Step(detail::Named<Operation>, StepResult meaning = Ignored) // NOLINT
        : Step(Operation) {
        m_meaning = meaning;
        m_name = detail::NameOfOperation<Operation>();
    }
    /// @}

    StepResult Meaning() const { return m_meaning; } ///< of its result
    const StepName& Name() const { return m_name; }  ///< empty if the table has none

    /// Calls the operation. @return its result; 0 of one that has none
    long Run(Graph& graph, const CycleInput& input) const {
        return std::visit([&](auto step) { return Call(graph, input, step); }, m_operation);
    }

private:
    static long Call(Graph& graph, const CycleInput&, Result step) { return (graph.*step)(); }
    static long Call(Graph& graph, const CycleInput&, IntResult step) { return (graph.*step)(); }
    static long Call(Graph& graph, const CycleInput&, NoResult step) {
        (graph.*step)();
        return kOk;
    }
    static long Call(Graph& graph, const CycleInput& input, OnArea step) { return (graph.*step)(input.area); }
    static long Call(Graph& graph, const CycleInput& input, OfFile step) { return (graph.*step)(input.path); }

    std::variant<Result, IntResult, NoResult, OnArea, OfFile> m_operation;
    StepResult m_meaning;
    StepName m_name;
};

/// Names for the table of one class, which derives from it.
template <class Graph> struct Steps {
    using G = Graph;                                                          ///< the class, for `&G::Operation`
    using Step = melkar::Step<Graph>;                                         ///< a row of the table
    template <auto Operation> static constexpr detail::Named<Operation> Do{}; ///< a step that calls it, by name
    static constexpr StepResult Needed = StepResult::Needed;                  ///< see `StepResult`
    static constexpr StepResult LastIfPainted = StepResult::LastIfPainted;    ///< likewise
};

/// Runs a table of steps, one after the other. @return 0, or the result of a needed step that failed
template <class Graph, std::size_t Count>
long RunSteps(Graph& graph, const Step<Graph> (&steps)[Count], const CycleInput& input = {}) {
    const HostDirectory here(detail::HostOf(graph, 0));
    StepScope scope;
    for (const Step<Graph>& step : steps) {
        scope.Enter(&step.Name());
        const long result = step.Run(graph, input);
        if (result == kOk || step.Meaning() == StepResult::Ignored)
            continue;
        return step.Meaning() == StepResult::Needed ? result : kOk;
    }
    return kOk;
}

/// Draws; whatever it throws becomes -999.
template <class Work> long DrawGuarded(Work work) {
    try {
        return work();
    } catch (...) {
        return kDrawFailed;
    }
}

/// A whole cycle: its steps, guarded, and the copy of the picture. On a printer's page it is a figure.
/// @return 0, or the result of a needed step that failed; -999 after an exception
template <class Graph, std::size_t Count>
long RunCycle(Graph& graph, const Step<Graph> (&steps)[Count], const CRect& area, char* path) {
    return DrawGuarded([&] {
        const ScopedPagePart figure(graph.ShownOn(), PageRole::Figure, area);
        const long result = RunSteps(graph, steps, {area, path});
        if (result == kOk)
            graph.BitBlt();
        return result;
    });
}

} // namespace melkar
