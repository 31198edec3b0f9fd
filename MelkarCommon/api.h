#pragma once

/// @file
/// What the shared library offers.

/// Marks what the shared library exports; everything else stays hidden.
#define MELKAR_API __attribute__((visibility("default")))
/// Marks the private operations of an exported class that its own sources alone call.
#define MELKAR_LOCAL __attribute__((visibility("hidden")))
