#include <MelkarCommon/platform/printing/cups.h>

namespace melkar {

CupsLibrary::CupsLibrary() : LateLibrary("libcups.so.2") {}

const CupsLibrary& Cups() {
    static const CupsLibrary library;
    return library;
}

} // namespace melkar
