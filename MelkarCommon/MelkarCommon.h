#pragma once

/// @file
/// Everything a host needs.

#include <MelkarCommon/bars/activity_cal_graph.h>
#include <MelkarCommon/bars/bar_graph.h>
#include <MelkarCommon/bars/expenditure_graph.h>
#include <MelkarCommon/bars/line_graph.h>
#include <MelkarCommon/bars/simulation.h>
#include <MelkarCommon/bars/step_graph.h>
#include <MelkarCommon/circadian/circadian_graph.h>
#include <MelkarCommon/frame/cycle.h>
#include <MelkarCommon/frame/day_status.h>
#include <MelkarCommon/frame/graph.h>
#include <MelkarCommon/frame/results.h>
#include <MelkarCommon/support/activity_figures.h>
#include <MelkarCommon/support/fields.h>
#include <MelkarCommon/support/font.h>
#include <MelkarCommon/support/ini_reader.h>
#include <MelkarCommon/support/marks.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/pictures.h>
#include <MelkarCommon/support/platform/arrays.h>
#include <MelkarCommon/support/platform/cstring.h>
#include <MelkarCommon/support/platform/datetime.h>
#include <MelkarCommon/support/platform/desktop.h>
#include <MelkarCommon/support/platform/drawing.h>
#include <MelkarCommon/support/platform/files.h>
#include <MelkarCommon/support/platform/geometry.h>
#include <MelkarCommon/support/platform/profile.h>
#include <MelkarCommon/support/platform/surface.h>
#include <MelkarCommon/support/platform/types.h>
#include <MelkarCommon/support/ring_log.h>
#include <MelkarCommon/support/scoped.h>
#include <MelkarCommon/support/support.h>
#include <MelkarCommon/support/text.h>
#include <MelkarCommon/support/text_box.h>
