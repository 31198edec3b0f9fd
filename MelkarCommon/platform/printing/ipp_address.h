#pragma once

#include <MelkarCommon/platform/printing/cups.h>

#include <optional>
#include <string>

/// @file
/// Internal. Where printers listen.

namespace melkar {

struct Address {
    std::string name; ///< as the host gave it
    std::string host; ///< a name, a number, or the path of a socket of this machine
    int port = 0;
    http_encryption_t encryption = HTTP_ENCRYPTION_IF_REQUESTED;
    std::string resource;
    std::string uri; ///< as requests name the printer
};

/// @param name "ipp://...", "ipps://...", or a queue of the server that CUPS knows: the one of CUPS_SERVER, or this
/// machine's. Nothing for what can't be any.
std::optional<Address> ParseAddress(const std::string& name);

} // namespace melkar
