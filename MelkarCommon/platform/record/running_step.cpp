#include <MelkarCommon/platform/running_step.h>

namespace melkar {

namespace {

thread_local const StepName* t_running = nullptr;

} // namespace

const StepName* RunningStep() { return t_running; }
void detail::SetRunningStep(const StepName* step) { t_running = step; }

} // namespace melkar
