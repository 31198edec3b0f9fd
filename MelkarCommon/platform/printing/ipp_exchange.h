#pragma once

#include <MelkarCommon/platform/printing/ipp_address.h>
#include <MelkarCommon/platform/printing/ipp_limits.h>
#include <MelkarCommon/platform/printing/ipp_message.h>

/// @file
/// Internal. A request to a print server and its answer, whatever the server does.

namespace melkar {

/// `message` is null if there was none; then `failure` says why.
struct IppAnswer {
    Message message;
    std::string failure;
};

/// Sends a request, and a file along with it, and waits for the answer. Ends by `deadline` or after `mostBytes`.
/// Follows no redirect and asks nobody for a password. @param document a file to read from; -1 for none
IppAnswer Exchange(const Address& address, const Message& request, int document, Clock::time_point deadline,
                   std::size_t mostBytes);

} // namespace melkar
