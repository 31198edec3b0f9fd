#include <MelkarCommon/platform/desktop.h>

#include <MelkarCommon/platform/surface.h>
#include <MelkarCommon/platform/values/locales.h>

#include <cstring>
#include <langinfo.h>
#include <mutex>

namespace {

/// The one setting that a host makes for the whole process; locked, so that nobody sees half of a new area.
struct WorkArea {
    std::mutex mutex;
    RECT area{0, 0, 1920, 1080};
};

WorkArea& TheWorkArea() {
    static WorkArea workArea;
    return workArea;
}

} // namespace

void SetWorkArea(const RECT& area) {
    WorkArea& workArea = TheWorkArea();
    const std::lock_guard lock(workArea.mutex);
    workArea.area = area;
}

BOOL SystemParametersInfoA(UINT query, UINT /*parameter*/, void* data, UINT /*flags*/) {
    if (query != SPI_GETWORKAREA || !data)
        return FALSE;
    WorkArea& workArea = TheWorkArea();
    const std::lock_guard lock(workArea.mutex);
    *static_cast<RECT*>(data) = workArea.area;
    return TRUE;
}

namespace melkar {

DayNames AbbreviatedDayNames(const char* locale) {
    const locale_t opened = OpenLocale(locale);
    const locale_t used = opened ? opened : CLocale();
    const nl_item items[] = {ABDAY_2, ABDAY_3, ABDAY_4, ABDAY_5, ABDAY_6, ABDAY_7, ABDAY_1};
    DayNames names;
    for (std::size_t day = 0; day < names.size(); ++day)
        names[day] = nl_langinfo_l(items[day], used);
    if (opened)
        freelocale(opened);
    return names;
}

} // namespace melkar

int GetLocaleInfoA(DWORD /*locale*/, DWORD query, char* buffer, int size) {
    static const melkar::DayNames kNames = melkar::AbbreviatedDayNames(""); // the environment at the first call
    const DWORD item = query & ~LOCALE_NOUSEROVERRIDE;
    if (item < LOCALE_SABBREVDAYNAME1 || item > LOCALE_SABBREVDAYNAME7)
        return 0;
    const std::string& name = kNames[item - LOCALE_SABBREVDAYNAME1];
    const int needed = static_cast<int>(name.size()) + 1;
    if (size == 0)
        return needed;
    if (!buffer || size < needed)
        return 0;
    std::memcpy(buffer, name.c_str(), static_cast<std::size_t>(needed));
    return needed;
}
