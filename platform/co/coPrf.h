// The shared pointer of the platform's tables.
#pragma once

#include <memory>

/// Deletes what it points to with the last of its copies.
template <class T>
using coPrf = std::shared_ptr<T>;
