#pragma once

#include <MelkarCommon/platform/files/new_file.h>
#include <MelkarCommon/platform/printing/ipp_limits.h>
#include <MelkarCommon/platform/printing/paper.h>

#include <memory>
#include <string>

/// @file
/// Internal. What the calls need of a printer: what it is by itself, where a document is written, and its handing over.

namespace melkar {

/// What a printer does if nothing is asked of it.
struct PrinterDefaults {
    const Paper* paper; ///< never null
    bool isColored;
};

/// What is asked of it for one job.
struct JobTicket {
    std::string name; ///< UTF-8
    const Paper* paper = nullptr;
    bool isLandscape = false;
    bool isColored = false;
    int copies = 1;
};

/// Takes one document. Gone without `Deliver`, it leaves nothing.
class PrintJob {
public:
    virtual ~PrintJob() = default;

    /// What the PDF document is written to, once. Null, with a log line, if there is no room for one.
    virtual std::unique_ptr<NewFile> Document() = 0;
    /// Hands over the document when it is finished. @return false, with a log line, if the printer didn't take it.
    virtual bool Deliver() = 0;
};

class Printer {
public:
    virtual ~Printer() = default;

    virtual const PrinterDefaults& Defaults() const = 0;
    /// The edges of a sheet that take no ink.
    virtual Margins MarginsOf(const Paper& paper) const = 0;
    virtual std::unique_ptr<PrintJob> Begin(const JobTicket& ticket) = 0;
};

/// Null, with a log line, if there is no such printer.
std::unique_ptr<Printer> FindPrinter(const std::string& name);

std::unique_ptr<Printer> FindFilePrinter(const std::string& path);
/// A document into a file, whatever printer it was meant for.
std::unique_ptr<PrintJob> FindFileJob(const char* path);
/// @param name an address, or a queue of the server that CUPS knows
std::unique_ptr<Printer> FindIppPrinter(const std::string& name, const IppLimits& limits = {});

void LogPrinter(const std::string& printer, const std::string& what);

} // namespace melkar
