// What no redraw can do without: clearing a picture and copying it.

#include "work.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

class Floor : public Peer {
public:
    void Draw(const MonthData&) override { Run(MonthData::kWidth * MonthData::kHeight); }
    bool HasDay() const override { return true; }
    void Draw(const DayData&) override { Run(DayData::kWidth * DayData::kHeight); }
    void Write(const char*) override {}

private:
    void Run(std::size_t pixels) {
        m_picture.resize(pixels);
        m_screen.resize(pixels);
        std::fill(m_picture.begin(), m_picture.end(), 0xFFFFFFFFU);
        asm volatile("" : : "r"(m_picture.data()) : "memory"); // the compiler may not leave it out
        std::copy(m_picture.begin(), m_picture.end(), m_screen.begin());
        asm volatile("" : : "r"(m_screen.data()) : "memory");
    }

    std::vector<std::uint32_t> m_picture;
    std::vector<std::uint32_t> m_screen;
};

} // namespace

int main(int argc, char** argv) {
    Floor floor;
    return RunPeer(argc, argv, floor);
}
