// Numbers that look random and are the same on every machine.
#pragma once

/// A number from 0 to under 1 for three integers, always the same for the same three.
double scatter(int x, int y, int seed);

/// Smooth noise from 0 to 1 over a lattice of one unit.
/// @param period_x, period_y  lattice units after which it repeats, at least 1
double noise(double x, double y, int period_x, int period_y, int seed);

/// Noise of several octaves, each with twice the detail and half the strength of the one before.
/// @return 0 to 1
double cloud(double x, double y, int period_x, int period_y, int octaves, int seed);

/// The part after the point, from 0 to under 1 for negative numbers too.
double fraction(double value);

/// 0 below @p from, 1 above @p to, smoothly between.
double smooth_step(double from, double to, double value);
