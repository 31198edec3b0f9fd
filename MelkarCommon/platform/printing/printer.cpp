#include <MelkarCommon/platform/printing/printer.h>

#include <MelkarCommon/platform/files/log_sink.h>

namespace melkar {

std::unique_ptr<Printer> FindPrinter(const std::string& name) {
    return name.ends_with(".pdf") || name.ends_with(".PDF") ? FindFilePrinter(name) : FindIppPrinter(name);
}

void LogPrinter(const std::string& printer, const std::string& what) {
    ReportFailure(("printer [" + printer + "]: " + what).c_str());
}

} // namespace melkar
