#pragma once

#include <MelkarCommon/api.h>

#include <memory>
#include <string>

/// @file
/// From which directory a thread finds profiles, formats of dates and its log, without a change of the process's
/// current directory.

namespace melkar {

/// A directory from which names of profiles and logs count. Copies are as good as the original, on any thread.
class MELKAR_API HostPlace {
public:
    HostPlace();                   ///< that of this thread, as it is now
    std::string Directory() const; ///< absolute; empty for the current directory of the process, as it changes
    /// Whether both are of one scope.
    bool operator==(const HostPlace& other) const { return m_directory == other.m_directory; }

private:
    friend class HostDirectory;
    MELKAR_LOCAL explicit HostPlace(const char* directory);

    std::shared_ptr<const std::string> m_directory; ///< null: that of the process
};

/// While it lives, this thread's relative names of profiles ("..\conf\graph.cnf") and of logs ("..\log\graph.log")
/// count from a directory of its own; names of data files and pictures stay as they are. Graphs, weeks, reports and
/// readers of profiles keep the directory that they were made under, whoever uses them. Scopes may stand in each other.
///
/// @code{.cpp}
/// const melkar::HostDirectory here("app/bin"); // the profile is app/conf/graph.cnf, the log app/log/graph.log
/// CStepGraph steps(nullptr, view, "STEPS", view, nullptr, nullptr);
/// steps.Draw(CRect(0, 0, 900, 500), path);
/// @endcode
class MELKAR_API HostDirectory {
public:
    /// @param directory absolute, or relative to the current directory of the process, which may change later. Empty
    /// or null: what counts is the current directory of the process, as without a scope
    explicit HostDirectory(const char* directory);
    explicit HostDirectory(HostPlace place); ///< that of an object, or of another thread
    ~HostDirectory();                        ///< what counted before counts again
    HostDirectory(const HostDirectory&) = delete;
    HostDirectory& operator=(const HostDirectory&) = delete;

private:
    HostPlace m_place;
    const HostPlace* m_outer;
};

namespace detail {
/// Where an object's own files are; of one that doesn't tell, where the thread's are.
template <class Object> auto HostOf(const Object& object, int) -> decltype(HostPlace(object.Host())) {
    return object.Host();
}
template <class Object> HostPlace HostOf(const Object&, long) { return HostPlace(); }
} // namespace detail

} // namespace melkar
