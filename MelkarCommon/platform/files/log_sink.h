#pragma once

/// @file
/// Internal. The drawing layer has something to tell whoever looks after the machine, and no log of its own: who stands
/// above it hands in where lines go.

namespace melkar {

/// Takes one line as it is: text from files is never a format. Called by any thread.
using LogSink = void (*)(const char* text);

/// Lines go to `sink` from now on; to nobody for null, as before the first call.
void SetLogSink(LogSink sink);

/// Hands a line to the sink.
void Report(const char* text);

} // namespace melkar
