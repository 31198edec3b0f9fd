#pragma once

#include <MelkarCommon/platform/printing/cups.h>

#include <memory>
#include <string>
#include <string_view>

/// @file
/// Internal. Messages to and from print servers, and their bytes.

namespace melkar {

struct DeleteIpp {
    void operator()(ipp_t* message) const { Cups().ippDelete(message); }
};
using Message = std::unique_ptr<ipp_t, DeleteIpp>;

/// Empty for a message that can't be sent.
std::string BytesOf(const Message& message);

/// Null for bytes that are no message, or whose collections nest deeper than any printer's.
Message MessageOf(std::string_view bytes);

} // namespace melkar
