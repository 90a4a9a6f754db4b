#include "gr_stretch_blt.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <vector>

// Whole numbers keep a plain colour exactly as it is, and a picture the same on every machine. The largest number is
// 255 * 255 * 255 times the totals of both sides, which fits for images of up to 2^37 pixels.

namespace {

/// The source pixels along one side that make one pixel of the destination.
struct Span
{
    int begin;         ///< the first of those that belong to it wholly
    int end;           ///< past the last of them
    std::int64_t head; ///< the weight of the pixel before them, or 0
    std::int64_t tail; ///< the weight of the pixel after them, or 0
};

/// One side of the rectangles.
struct Side
{
    std::vector<Span> spans; ///< one for each pixel of the destination
    std::int64_t weight = 1; ///< of a pixel that belongs to a span wholly
    std::int64_t total = 1;  ///< what the weights of a span add up to
};

/// The unit of the weights is 1 / to of a source pixel.
/// @param to  at most @p from
Side make_side(std::int64_t from, std::int64_t to)
{
    Side side;
    side.weight = to;
    side.total = from;
    for (std::int64_t low = 0; low < from * to; low += from) {
        std::int64_t const begin = (low + to - 1) / to;
        std::int64_t const end = (low + from) / to;
        side.spans.push_back(
            {static_cast<int>(begin), static_cast<int>(end), begin * to - low, low + from - end * to});
    }
    return side;
}

/// Weighed sums: of red, green and blue each times its alpha, and of alpha.
using Sum = std::array<std::int64_t, 4>;

/// Adds up rows of the source, each column by itself, and then along the columns. In this order nearly all the
/// time goes into one loop that compilers vectorize: add().
class RowSums
{
public:
    RowSums(unsigned char const* pixels, std::ptrdiff_t stride, int width)
        : m_pixels(pixels), m_stride(stride), m_width(static_cast<std::size_t>(width))
    {
        for (auto& plane : m_recent)
            plane.resize(m_width);
    }

    void sum(Span const& rows, std::int64_t weight);
    Sum along(Span const& columns, std::int64_t weight) const;

private:
    void add(int y);
    void settle(std::int64_t weight);

    unsigned char const* m_pixels;
    std::ptrdiff_t m_stride;
    std::size_t m_width;
    std::array<std::vector<std::uint32_t>, 4> m_recent; ///< not weighed yet
    std::array<std::vector<std::int64_t>, 4> m_sums;
};

void RowSums::add(int y)
{
    unsigned char const* const row = m_pixels + y * m_stride;
    auto const& [red, green, blue, alpha] =
        std::array{m_recent[0].data(), m_recent[1].data(), m_recent[2].data(), m_recent[3].data()};
    for (std::size_t x = 0; x < m_width; ++x) {
        std::uint32_t const opacity = row[4 * x + 3];
        red[x] += opacity * row[4 * x];
        green[x] += opacity * row[4 * x + 1];
        blue[x] += opacity * row[4 * x + 2];
        alpha[x] += opacity;
    }
}

void RowSums::settle(std::int64_t weight)
{
    for (std::size_t plane = 0; plane < 4; ++plane)
        for (std::size_t x = 0; x < m_width; ++x) {
            m_sums[plane][x] += weight * m_recent[plane][x];
            m_recent[plane][x] = 0;
        }
}

void RowSums::sum(Span const& rows, std::int64_t weight)
{
    constexpr int most = 1 << 16; // rows whose sums fit into 32 bits
    for (auto& plane : m_sums)
        plane.assign(m_width, 0);
    if (rows.head > 0) {
        add(rows.begin - 1);
        settle(rows.head);
    }
    for (int y = rows.begin; y < rows.end; ++y) {
        add(y);
        if (y + 1 == rows.end || (y + 1 - rows.begin) % most == 0)
            settle(weight);
    }
    if (rows.tail > 0) {
        add(rows.end);
        settle(rows.tail);
    }
}

Sum RowSums::along(Span const& columns, std::int64_t weight) const
{
    Sum sum{};
    for (std::size_t plane = 0; plane < 4; ++plane) {
        std::int64_t const* const sums = m_sums[plane].data();
        sum[plane] = weight * std::accumulate(sums + columns.begin, sums + columns.end, std::int64_t{0});
        if (columns.head > 0)
            sum[plane] += columns.head * sums[columns.begin - 1];
        if (columns.tail > 0)
            sum[plane] += columns.tail * sums[columns.end];
    }
    return sum;
}

/// Lays a colour over a pixel.
/// @param whole  the sum of alpha of an opaque source
void lay_over(unsigned char* pixel, Sum const& sum, std::int64_t whole)
{
    auto const rounded = [](std::int64_t number, std::int64_t divisor) {
        return static_cast<unsigned char>((number + divisor / 2) / divisor);
    };
    std::int64_t const below = (whole - sum[3]) * pixel[3];
    std::int64_t const both = sum[3] * 255 + below;
    if (both == 0)
        return;
    for (std::size_t i = 0; i < 3; ++i)
        pixel[i] = rounded(sum[i] * 255 + below * pixel[i], both);
    pixel[3] = rounded(both, whole);
}

bool lies_within(dgDuctImage const& image, int x, int y, int width, int height)
{
    return x >= 0 && y >= 0 && width > 0 && height > 0 && width <= image.width() - x &&
           height <= image.height() - y;
}

std::ptrdiff_t stride(dgDuctImage const& image)
{
    return 4 * static_cast<std::ptrdiff_t>(image.width());
}

} // namespace

void gr_stretch_blt(dgDuctImage& destination, int x, int y, int width, int height, dgDuctImage const& source,
                    int source_x, int source_y, int source_width, int source_height, grStretchBltMode)
{
    if (!lies_within(destination, x, y, width, height) ||
        !lies_within(source, source_x, source_y, source_width, source_height) || width > source_width ||
        height > source_height)
        return;

    Side const columns = make_side(source_width, width);
    Side const lines = make_side(source_height, height);
    std::int64_t const whole = 255 * columns.total * lines.total;
    RowSums rows(source.pixels() + source_y * stride(source) + 4 * std::ptrdiff_t{source_x}, stride(source),
                 source_width);

    unsigned char* line = destination.pixels() + y * stride(destination) + 4 * std::ptrdiff_t{x};
    for (Span const& span : lines.spans) {
        rows.sum(span, lines.weight);
        unsigned char* pixel = line;
        for (Span const& column : columns.spans) {
            lay_over(pixel, rows.along(column, columns.weight), whole);
            pixel += 4;
        }
        line += stride(destination);
    }
}
