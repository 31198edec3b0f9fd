#include "kinds.h"

#include "tool_graph.h"

namespace melkar::tool {
namespace {

template <class G> std::unique_ptr<Chart> Make(const ChartOptions& options) {
    return std::make_unique<ToolGraph<G>>(options);
}

constexpr Kind kKinds[] = {
    {"bar", "a bar for each day, or a stack of bars", Make<CBarGraph>},
};

} // namespace

std::span<const Kind> Kinds() { return kKinds; }

const Kind* FindKind(std::string_view name) {
    for (const Kind& kind : kKinds) {
        if (name == kind.name)
            return &kind;
    }
    return nullptr;
}

} // namespace melkar::tool
