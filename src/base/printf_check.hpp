// The compiler's check of printf formats, for the few functions that take one.
#pragma once

#if defined(__MINGW32__) && !defined(__clang__)
// What the C library of Windows has by that name checks other lengths than what we are linked with.
#define TANROVE_PRINTF(format_index, first_value) \
    __attribute__((format(gnu_printf, format_index, first_value)))
#elif defined(__GNUC__)
/// `format_index` is the place of the format among the parameters, counted from 1 (2 for the first
/// parameter of a member function); `first_value` that of the first value behind it.
#define TANROVE_PRINTF(format_index, first_value) \
    __attribute__((format(printf, format_index, first_value)))
#else
#define TANROVE_PRINTF(format_index, first_value)
#endif
