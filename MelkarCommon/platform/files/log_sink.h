#pragma once

/// @file
/// Internal. The drawing layer has something to tell whoever looks after the machine, and no log of its own: who stands
/// above it says where lines go.

namespace melkar {

/// Takes one line as it is: text from files is never a format. Called by any thread.
using LogSink = void (*)(const char* text);

/// Where lines go to begin with. The layer leaves it open: the library's ring log defines it, and `stderr_log.cpp` for
/// programs of the layer alone. So a linker can't leave the log out, as it would leave out a file of a static library
/// that only installs itself, and a program without a place for lines doesn't link.
void StandardLogSink(const char* text);

/// Lines go to `sink` from now on, to nobody for null. @return where they went until now
LogSink SetLogSink(LogSink sink);

/// Hands a line to the sink.
void Report(const char* text);

/// The same for why a picture file, a page or a document came to nothing: `LastFailure` of this thread tells it.
void ReportFailure(const char* text);
/// For a host that asks: what the caller did wrong is no line in the log.
void KeepFailure(const char* text);
/// Something of the kind succeeded.
void ForgetFailure();

} // namespace melkar
