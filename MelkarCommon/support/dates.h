#pragma once

#include <MelkarCommon/platform/cstring.h>
#include <MelkarCommon/platform/host_directory.h>

#include <memory>

namespace melkar {

class ProfileSnapshot;

constexpr const char* kSystemProfile = "..\\conf\\config.cnf"; ///< formats of dates, and whether to print in colour

/// The format that `FormatDateEx` uses for `key`: for many dates in one go.
CString DateFormat(const char* key);

/// While it lives, this thread takes formats of dates from one reading of their profile: a sheet of seven days is of
/// one state of it, and asks once whether that has changed.
class SharedDateFormats {
public:
    SharedDateFormats();
    ~SharedDateFormats(); ///< what an outer one shares is shared again
    SharedDateFormats(const SharedDateFormats&) = delete;
    SharedDateFormats& operator=(const SharedDateFormats&) = delete;

private:
    friend CString DateFormat(const char* key);
    std::shared_ptr<const ProfileSnapshot> Read();

    std::shared_ptr<const ProfileSnapshot> m_profile; ///< read with the first date
    HostPlace m_host;                                 ///< of the file
    SharedDateFormats* m_outer;
};

} // namespace melkar
