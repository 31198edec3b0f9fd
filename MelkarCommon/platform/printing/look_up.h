#pragma once

#include <MelkarCommon/platform/printing/cups.h>

#include <chrono>
#include <memory>
#include <string>

/// @file
/// Internal. From the name of a machine to its addresses.

namespace melkar {

struct FreeAddresses {
    void operator()(http_addrlist_t* addresses) const { Cups().httpAddrFreeList(addresses); }
};
using Addresses = std::unique_ptr<http_addrlist_t, FreeAddresses>;

/// Null if there are none, or none by `deadline`: a resolver may take minutes, and can't be interrupted. It goes on by
/// itself then, and nobody listens. @param host a name, a number, or the path of a socket of this machine
Addresses LookUp(const std::string& host, int port, std::chrono::steady_clock::time_point deadline);

} // namespace melkar
