#include <MelkarCommon/checker/color_difference.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace melkar {

namespace {

using Triple = std::array<double, 3>;
using Matrix = std::array<Triple, 3>;

constexpr Matrix kProtanopia = {
    {{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}};
constexpr Matrix kDeuteranopia = {
    {{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}};
constexpr Matrix kTritanopia = {
    {{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}};
constexpr Matrix kAsItIs = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

/// Of linear sRGB, as IEC 61966-2-1 gives it; the middle row is luminance.
constexpr Matrix kToXyz = {{{0.4124, 0.3576, 0.1805}, {0.2126, 0.7152, 0.0722}, {0.0193, 0.1192, 0.9505}}};

double Times(const Triple& row, const Triple& column) {
    return row[0] * column[0] + row[1] * column[1] + row[2] * column[2];
}

Triple Times(const Matrix& matrix, const Triple& column) {
    return {Times(matrix[0], column), Times(matrix[1], column), Times(matrix[2], column)};
}

double Linear(unsigned channel) {
    const double part = channel / 255.0;
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

Triple LinearOf(COLORREF color) {
    return {Linear(color & 0xFF), Linear(color >> 8 & 0xFF), Linear(color >> 16 & 0xFF)};
}

const Matrix& MatrixOf(Sight sight) {
    switch (sight) {
    case Sight::Protanopia:
        return kProtanopia;
    case Sight::Deuteranopia:
        return kDeuteranopia;
    case Sight::Tritanopia:
        return kTritanopia;
    default:
        return kAsItIs;
    }
}

/// L*, a* and b*.
Triple LabOf(COLORREF color, Sight sight) {
    Triple light = Times(MatrixOf(sight), LinearOf(color));
    for (double& part : light)
        part = std::clamp(part, 0.0, 1.0); // what a screen can't show
    const Triple xyz = Times(kToXyz, light);
    const auto root = [](double part) {
        constexpr double kStraight = 216.0 / 24389;
        return part > kStraight ? std::cbrt(part) : (24389.0 / 27 * part + 16) / 116;
    };
    const double x = root(xyz[0] / 0.9505);
    const double y = root(xyz[1]);
    const double z = root(xyz[2] / 1.0890);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

} // namespace

double ContrastOf(COLORREF a, COLORREF b) {
    constexpr double kFlare = 0.05;
    const double first = Times(kToXyz[1], LinearOf(a)) + kFlare;
    const double second = Times(kToXyz[1], LinearOf(b)) + kFlare;
    return std::max(first, second) / std::min(first, second);
}

double DistanceOf(COLORREF a, COLORREF b, Sight sight) {
    const Triple first = LabOf(a, sight);
    const Triple second = LabOf(b, sight);
    const double lightness = first[0] - second[0];
    return sight == Sight::Grey ? std::abs(lightness)
                                : std::hypot(lightness, first[1] - second[1], first[2] - second[2]);
}

} // namespace melkar
