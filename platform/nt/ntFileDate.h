// A file's date.
#pragma once

/// When a file was last changed, in UTC: full years, months and days from 1, seconds without their fraction.
/// The date of a file that is not there is all zeros.
class ntFileDate
{
public:
    ntFileDate() = default;
    ntFileDate(int year, int month, int day, int hour, int minute, int seconds)
        : m_year(year), m_month(month), m_day(day), m_hour(hour), m_minute(minute), m_seconds(seconds)
    {}

    int year() const { return m_year; }
    int month() const { return m_month; }
    int day() const { return m_day; }
    int hour() const { return m_hour; }
    int minute() const { return m_minute; }
    int seconds() const { return m_seconds; }

private:
    int m_year = 0;
    int m_month = 0;
    int m_day = 0;
    int m_hour = 0;
    int m_minute = 0;
    int m_seconds = 0;
};
