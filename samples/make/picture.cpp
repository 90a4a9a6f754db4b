#include "picture.h"

#include "gxPNG.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <stdexcept>

namespace {

/// Adds up the paints of a pixel, each colour as much as it covers.
class PixelSum
{
public:
    void add(Paint const& paint)
    {
        m_red += paint.colour.red() * paint.alpha;
        m_green += paint.colour.green() * paint.alpha;
        m_blue += paint.colour.blue() * paint.alpha;
        m_alpha += paint.alpha;
        ++m_count;
    }

    void put(dgDuctImage& image, int x, int y) const
    {
        int const weight = std::max(m_alpha, 1);
        short const components[4] = {share(m_red, weight), share(m_green, weight), share(m_blue, weight),
                                     share(m_alpha, m_count)};
        image.set_pixel(x, y, components);
    }

private:
    static short share(int sum, int weight) { return static_cast<short>((sum + weight / 2) / weight); }

    int m_red = 0;
    int m_green = 0;
    int m_blue = 0;
    int m_alpha = 0;
    int m_count = 0;
};

std::string all_bytes(std::FILE* file)
{
    std::string bytes(static_cast<std::size_t>(std::ftell(file)), '\0');
    std::rewind(file);
    if (std::fread(bytes.data(), 1, bytes.size(), file) != bytes.size())
        throw std::runtime_error("a temporary file cannot be read");
    return bytes;
}

} // namespace

Image paint(std::string const& name, int width, int height, int samples, Painter const& painter)
{
    Image image = dg_hold(new dgDuctImage(name.c_str(), width, height));
    double const step = 1.0 / (width * samples);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            PixelSum sum;
            for (int down = 0; down < samples; ++down)
                for (int along = 0; along < samples; ++along)
                    sum.add(painter((x * samples + along + 0.5) * step, (y * samples + down + 0.5) * step));
            sum.put(*image, x, y);
        }
    return image;
}

gsRGB mix(gsRGB const& from, gsRGB const& to, double share)
{
    auto const between = [share](int first, int last) {
        return static_cast<int>(std::floor(first + (last - first) * std::clamp(share, 0.0, 1.0) + 0.5));
    };
    return {between(from.red(), to.red()), between(from.green(), to.green()),
            between(from.blue(), to.blue())};
}

gsRGB step_mix(gsRGB const& from, gsRGB const& to, double share, int steps)
{
    return mix(from, to, std::floor(std::clamp(share, 0.0, 1.0) * (steps - 1) + 0.5) / (steps - 1));
}

std::string png(dgDuctImage const& image)
{
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> const file(std::tmpfile(), &std::fclose);
    utStringutStringcoTable const texts(4, 50);
    if (!file || !gxPNGWriterDuctImage::write_file(image, file.get(), texts))
        throw std::runtime_error(std::string("no PNG can be made of the image ") + image.name());
    return all_bytes(file.get());
}
