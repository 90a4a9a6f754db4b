// An 8-bit colour.
#pragma once

/// Red, green and blue, 0 to 255 each (a value beyond is taken modulo 256); black by default.
class gsRGB
{
public:
    gsRGB() = default;
    gsRGB(int red, int green, int blue)
        : m_red(static_cast<unsigned char>(red)),
          m_green(static_cast<unsigned char>(green)),
          m_blue(static_cast<unsigned char>(blue))
    {}

    int red() const { return m_red; }
    int green() const { return m_green; }
    int blue() const { return m_blue; }

    bool operator==(gsRGB const&) const = default;

private:
    unsigned char m_red = 0;
    unsigned char m_green = 0;
    unsigned char m_blue = 0;
};
