#include "work.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <vector>

MonthData MonthData::Turn(int turn) {
    std::mt19937 random(static_cast<unsigned>(turn));
    std::uniform_int_distribution<int> figures(500, 11500);
    MonthData month;
    for (int& steps : month.steps)
        steps = figures(random);
    return month;
}

std::string MonthData::Date(int day) {
    char text[8];
    std::snprintf(text, sizeof text, "03/%02d", day + 1);
    return text;
}

DayData DayData::Turn(int turn) {
    std::mt19937 random(static_cast<unsigned>(turn));
    std::uniform_real_distribution<double> jitter(0.0, 1.0);
    std::uniform_int_distribution<int> level(0, 8);
    DayData day;
    for (std::size_t hour = 0; hour < 24; ++hour) {
        const int base = level(random);
        for (std::size_t i = 0; i < 30; ++i)
            day.intensity[hour * 30 + i] = base + jitter(random);
    }
    for (double& minutes : day.minutes)
        minutes = level(random) * 7 + jitter(random);
    day.steps = static_cast<int>(random() % 20000);
    return day;
}

std::string DayData::Summary() const {
    return std::to_string(steps) + " steps · " + std::to_string(steps / 30) + " kcal active · " +
           std::to_string(1500 + steps / 30) + " kcal total";
}

namespace {

using Clock = std::chrono::steady_clock;

double MicrosecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

template <class Data> std::vector<Data> Turns() {
    std::vector<Data> turns;
    for (int turn = 0; turn < kTurns; ++turn)
        turns.push_back(Data::Turn(turn));
    return turns;
}

template <class Data> void Steady(Peer& peer, double seconds) {
    const std::vector<Data> turns = Turns<Data>();
    for (const Data& turn : turns) // warm
        peer.Draw(turn);
    std::vector<double> times;
    const Clock::time_point start = Clock::now();
    for (std::size_t next = 0; times.size() < 20 || MicrosecondsSince(start) < seconds * 1e6; ++next) {
        const Clock::time_point before = Clock::now();
        peer.Draw(turns[next % turns.size()]);
        times.push_back(MicrosecondsSince(before));
    }
    std::sort(times.begin(), times.end());
    std::printf("%.2f %.2f\n", times.front(), times[times.size() / 2]);
}

template <class Data> void Many(Peer& peer, const char* path, int count) {
    const std::vector<Data> turns = Turns<Data>();
    const Clock::time_point start = Clock::now();
    for (int i = 0; i < count; ++i) {
        peer.Draw(turns[static_cast<std::size_t>(i) % turns.size()]);
        peer.Write(path);
    }
    std::printf("%.2f\n", MicrosecondsSince(start) / count);
}

template <class Data> int Run(Peer& peer, const std::string& mode, int argc, char** argv) {
    if (mode == "steady") {
        Steady<Data>(peer, std::atof(argv[3]));
    } else if (mode == "first") {
        peer.Draw(Data::Turn(0));
        peer.Write(argv[3]);
    } else if (mode == "many" && argc > 4) {
        Many<Data>(peer, argv[3], std::atoi(argv[4]));
    } else {
        return 2;
    }
    return 0;
}

/// For programs that aren't C++: a month a line.
void PrintMonths() {
    for (int turn = 0; turn < kTurns; ++turn) {
        for (const int steps : MonthData::Turn(turn).steps)
            std::printf("%d ", steps);
        std::printf("\n");
    }
}

} // namespace

int RunPeer(int argc, char** argv, Peer& peer) {
    if (argc == 2 && std::strcmp(argv[1], "months") == 0) {
        PrintMonths();
        return 0;
    }
    if (argc < 4)
        return 2;
    if (std::strcmp(argv[2], "month") == 0 && peer.HasMonth())
        return Run<MonthData>(peer, argv[1], argc, argv);
    if (std::strcmp(argv[2], "day") == 0 && peer.HasDay())
        return Run<DayData>(peer, argv[1], argc, argv);
    return 3;
}
