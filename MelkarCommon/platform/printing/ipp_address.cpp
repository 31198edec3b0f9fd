#include <MelkarCommon/platform/printing/ipp_address.h>

#include <array>
#include <cstring>

namespace melkar {
namespace {

std::optional<Address> ParseUri(const std::string& name) {
    std::array<char, HTTP_MAX_URI> scheme{}, user{}, host{}, resource{};
    int port = 0;
    const auto size = static_cast<int>(HTTP_MAX_URI);
    if (Cups().httpSeparateURI(HTTP_URI_CODING_ALL, name.c_str(), scheme.data(), size, user.data(), size, host.data(),
                               size, &port, resource.data(), size) < HTTP_URI_STATUS_OK)
        return std::nullopt;
    const bool isSecure = std::strcmp(scheme.data(), "ipps") == 0;
    return Address{
        name, host.data(), port, isSecure ? HTTP_ENCRYPTION_ALWAYS : HTTP_ENCRYPTION_IF_REQUESTED, resource.data(),
        name};
}

/// A queue of the server that CUPS knows: the one of CUPS_SERVER, or this machine's.
std::optional<Address> ParseQueue(const std::string& name) {
    std::array<char, HTTP_MAX_URI> uri{};
    if (Cups().httpAssembleURIf(HTTP_URI_CODING_ALL, uri.data(), static_cast<int>(uri.size()), "ipp", nullptr,
                                "localhost", 0, "/printers/%s", name.c_str()) < HTTP_URI_STATUS_OK)
        return std::nullopt;
    return Address{name,      Cups().cupsServer(), Cups().ippPort(), Cups().cupsEncryption(), "/printers/" + name,
                   uri.data()};
}

} // namespace

std::optional<Address> ParseAddress(const std::string& name) {
    if (name.starts_with("ipp://") || name.starts_with("ipps://"))
        return ParseUri(name);
    const bool isQueue = !name.empty() && name.find_first_of("/?# \t") == std::string::npos;
    return isQueue ? ParseQueue(name) : std::nullopt;
}

} // namespace melkar
