#include "noise.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace {

double mix(double from, double to, double share)
{
    return from + (to - from) * share;
}

int wrap(int value, int period)
{
    int const rest = value % period;
    return rest < 0 ? rest + period : rest;
}

} // namespace

double scatter(int x, int y, int seed)
{
    // Multiplying by odd numbers loses no bit, shifting brings the upper bits down to the lower ones.
    std::uint32_t bits = static_cast<std::uint32_t>(x) * 0x8da6b343u ^
                         static_cast<std::uint32_t>(y) * 0xd8163841u ^
                         static_cast<std::uint32_t>(seed) * 0xcb1ab31fu;
    for (int round = 0; round < 2; ++round) {
        bits ^= bits >> 15;
        bits *= 0x2c1b3c6du;
        bits ^= bits >> 13;
    }
    return bits / 4294967296.0;
}

double noise(double x, double y, int period_x, int period_y, int seed)
{
    int const left = static_cast<int>(std::floor(x));
    int const top = static_cast<int>(std::floor(y));
    auto const at = [&](int dx, int dy) {
        return scatter(wrap(left + dx, period_x), wrap(top + dy, period_y), seed);
    };
    double const along = smooth_step(0, 1, x - left);
    double const down = smooth_step(0, 1, y - top);
    return mix(mix(at(0, 0), at(1, 0), along), mix(at(0, 1), at(1, 1), along), down);
}

double cloud(double x, double y, int period_x, int period_y, int octaves, int seed)
{
    double sum = 0;
    double total = 0;
    double strength = 1;
    for (int octave = 0; octave < octaves; ++octave) {
        int const scale = 1 << octave;
        sum += strength * noise(x * scale, y * scale, period_x * scale, period_y * scale, seed + octave);
        total += strength;
        strength /= 2;
    }
    return sum / total;
}

double fraction(double value)
{
    return value - std::floor(value);
}

double smooth_step(double from, double to, double value)
{
    double const share = std::clamp((value - from) / (to - from), 0.0, 1.0);
    return share * share * (3 - 2 * share);
}
