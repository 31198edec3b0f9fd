#pragma once

#include <array>
#include <string>

/// @file
/// What all programs draw: the same month and the same day, with other figures at each turn.

constexpr int kDays = 31;
constexpr int kTurns = 64; ///< pictures before one comes again: more figures than caches of texts hold

/// A month of bars, 900 x 500: title, scale 0 to 14000 by 2000 with lines and labels, a figure over each bar, the
/// target with its legend, every fifth date.
struct MonthData {
    static constexpr int kWidth = 900;
    static constexpr int kHeight = 500;
    static constexpr int kTop = 14000;
    static constexpr int kStep = 2000;
    static constexpr int kTarget = 8000;
    static constexpr int kDateStep = 5;

    std::array<int, kDays> steps{};

    static MonthData Turn(int turn);
    static std::string Date(int day); ///< "03/01" is day 0
    static const char* Title() { return "Steps this month"; }
    static const char* TargetText() { return "Target: 8000 steps"; }
};

/// The sheet of a day, 900 x 160: its date, class strip, lines of nine levels, the profile of 720 values over 24 hours
/// with its figures and marks, a summary, and a bar with a figure for each level.
struct DayData {
    static constexpr int kWidth = 900;
    static constexpr int kHeight = 160;
    static constexpr int kValues = 720;
    static constexpr int kLevels = 9;

    std::array<double, kValues> intensity{};
    std::array<double, kLevels> minutes{};
    int steps = 0;

    static DayData Turn(int turn);
    std::string Summary() const;
    static constexpr std::array<int, 3> kEvents{420, 750, 1125}; ///< minutes of the day
};

/// A program that draws them. It keeps between two redraws what an application would: fonts, objects, windows.
class Peer {
public:
    virtual ~Peer() = default;
    virtual bool HasMonth() const { return true; }
    virtual void Draw(const MonthData&) {}
    virtual bool HasDay() const { return false; }
    virtual void Draw(const DayData&) {}
    /// The last picture into a PNG file.
    virtual void Write(const char* path) = 0;
};

/// `steady WHAT SECONDS` redraws and prints the least and the median of its times in microseconds; `first WHAT FILE`
/// draws and writes one picture; `many WHAT FILE COUNT` draws and writes so many, and prints microseconds a picture.
/// WHAT is month or day; exit code 3 for what the peer can't draw.
int RunPeer(int argc, char** argv, Peer& peer);
