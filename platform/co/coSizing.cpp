#include "coSizing.h"

#include <algorithm>

coSizing::coSizing(int initial_size, int fill_limit)
    : entries(static_cast<std::size_t>(std::max(initial_size, 0))),
      load_factor(static_cast<float>(std::clamp(fill_limit, 1, 99)) / 100.0f)
{}
