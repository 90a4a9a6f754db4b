// The owning pointer of the platform's tables.
#pragma once

#include <memory>

/// Deletes what it points to; moved, never copied.
template <class T>
using coPrg = std::unique_ptr<T>;
