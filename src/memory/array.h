// Arrays in malloc'd memory that grow.  Elements are moved as bytes, and new ones
// are not initialized.

#pragma once

#include <cstddef>
#include <cstdlib>

// Resize an array, which may be null, to `count` elements.  Returns false, and
// leaves the array as it is, if there is no memory.
template <typename element> bool array_resize(element **array, size_t count)
{
    void *resized = realloc(*array, count * sizeof **array);
    if (resized == nullptr)
        return false;
    *array = static_cast<element *>(resized);
    return true;
}

// Ensure that `count` elements and one more fit.  A full array grows to
// `count` + `step` elements.  Returns false, and changes nothing, if there is no
// memory.
template <typename element> bool array_reserve(element **array, int *capacity, int count, int step)
{
    if (count < *capacity)
        return true;
    const int new_capacity = count + step;
    if (!array_resize(array, static_cast<size_t>(new_capacity)))
        return false;
    *capacity = new_capacity;
    return true;
}
