#pragma once

#include <MelkarCommon/platform/host_directory.h>
#include <MelkarCommon/platform/host_surfaces.h>
#include <MelkarCommon/platform/last_failure.h>
#include <MelkarCommon/support/keep_locale.h>

/// @file
/// What only hosts call: where a program's own files are, surfaces on what it has, its locale, why something failed.
