#pragma once

#include <cstddef>

/// @file
/// A draw cycle as a list of what one sees.

namespace melkar {

/// One step: an operation of the class that takes nothing. Virtual ones run as the object's class overrides them.
template <class Graph> class Step {
public:
    constexpr Step(long (Graph::*step)()) : m_step(step) {}      // NOLINT: a table of steps lists operations
    constexpr Step(void (Graph::*step)()) : m_plainStep(step) {} // NOLINT
    void Run(Graph& graph) const {
        if (m_step)
            (graph.*m_step)();
        else
            (graph.*m_plainStep)();
    }

private:
    long (Graph::*m_step)() = nullptr;
    void (Graph::*m_plainStep)() = nullptr;
};

/// Runs a class's table of steps, one after the other.
template <class Graph, std::size_t Count> void RunSteps(Graph& graph, const Step<Graph> (&steps)[Count]) {
    for (const Step<Graph>& step : steps)
        step.Run(graph);
}

} // namespace melkar
