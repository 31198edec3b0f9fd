#include <MelkarCommon/support/platform/printing/printer.h>

#include <MelkarCommon/support/platform/files/report.h>

namespace melkar {

std::unique_ptr<Printer> FindPrinter(const std::string& name) {
    return name.ends_with(".pdf") || name.ends_with(".PDF") ? FindFilePrinter(name) : FindIppPrinter(name);
}

void LogPrinter(const std::string& printer, const std::string& what) {
    LogText(("printer [" + printer + "]: " + what).c_str());
}

} // namespace melkar
