#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/cstring.h>
#include <MelkarCommon/platform/host_directory.h>

/// @file
/// Reads of profile files.

/// Reads profile files; nothing is cached, every read goes to the file. Relative names count from where they counted
/// when the reader was made.
class MELKAR_API CIniReader {
public:
    /// A reader of that file.
    explicit CIniReader(CString path = CString()) : m_strFilePath(static_cast<CString&&>(path)) {}
    CIniReader(const CIniReader&) = default;            ///< of the same file
    CIniReader& operator=(const CIniReader&) = default; ///< of the same file
    virtual ~CIniReader() = default;

    void SetFilePath(CString path) { m_strFilePath = path; } ///< of the reader's own file
    CString GetFilePath() const { return m_strFilePath; }    ///< of the reader's own file

    const melkar::HostPlace& Host() const { return m_host; } ///< from where relative names count

    /// The value, at most 9999 bytes, with a line feed for every "__YN__" in it; `fallback` (treated alike) if there is
    /// no such key. An empty file name stands for the reader's own file.
    CString ReadString(CString file, CString section, CString key, const char* fallback);
    /// The key's integer, or `fallback` if there is no such key.
    int ReadStringToInt(CString file, CString section, CString key, int fallback);

protected:
    CString m_strFilePath; ///< file of a read with an empty file name

private:
    melkar::HostPlace m_host;
};
