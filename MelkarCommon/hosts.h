#pragma once

#include <MelkarCommon/platform/host_directory.h>

/// @file
/// What only hosts call: where a program's own files are.
