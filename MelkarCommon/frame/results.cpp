#include <MelkarCommon/frame/results.h>

namespace melkar {

const char* ResultText(long code) {
    switch (code) {
    case kOk:
        return "done";
    case kNothingToDraw:
        return "nothing more is to be drawn";
    case kNoFile:
        return "the data file can't be opened";
    case kNoDays:
        return "the data file has no day rows";
    case kReadFailed:
        return "the data file couldn't be read";
    case kNoSurface:
        return "there is no surface to draw on";
    case kNoWeekFile:
        return "the weekly data file can't be opened";
    case kDrawFailed:
        return "drawing broke off";
    case kImageFailed:
        return "the picture couldn't be drawn";
    default:
        return "unknown result";
    }
}

} // namespace melkar
