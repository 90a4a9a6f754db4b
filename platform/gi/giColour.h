// A colour of four bytes.
#pragma once

/// Red, green, blue and a fourth byte, 0 to 255 each; black with a fourth byte of 0 by default.
class giColour
{
public:
    giColour() = default;
    giColour(unsigned char red, unsigned char green, unsigned char blue, unsigned char fourth)
        : m_red(red), m_green(green), m_blue(blue), m_fourth(fourth)
    {}

    unsigned char red() const { return m_red; }
    unsigned char green() const { return m_green; }
    unsigned char blue() const { return m_blue; }

    /// All four bytes are compared.
    bool operator==(giColour const&) const = default;

private:
    unsigned char m_red = 0;
    unsigned char m_green = 0;
    unsigned char m_blue = 0;
    unsigned char m_fourth = 0;
};
