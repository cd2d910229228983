// The conversions that project lines use, each handed to the printer of its kind.
#include "base/c_locale_print.hpp"

#include <cstring>

#include "base/formatted_text.hpp"
#include "base/number_text.hpp"

namespace tanrove {

namespace {

constexpr int max_precision = 17;

/// The precision at `format`, which moves behind it; -1 for one that is not known.
int read_precision(const char*& format) {
    if (*format != '.') return usual_precision;
    ++format;
    if (*format < '0' || *format > '9') return -1;
    int precision = 0;
    for (; *format >= '0' && *format <= '9' && precision <= max_precision; ++format) {
        precision = precision * 10 + (*format - '0');
    }
    return precision <= max_precision ? precision : -1;
}

}  // namespace

bool append_plain(LineBuffer& target, const char* format, std::va_list values) {
    const std::size_t before = target.size();
    const auto refuse = [&] {
        target.shorten(before);
        return false;
    };
    for (;;) {
        const char* const conversion = std::strchr(format, '%');
        if (conversion == nullptr) break;
        append_parts(target, std::string_view(format, conversion));
        format = conversion + 1;
        const bool has_precision = *format == '.';
        const int precision = read_precision(format);
        const bool is_real = *format == 'f' || *format == 'g';
        if (precision < 0 || (has_precision && !is_real)) return refuse();
        if (*format == 'f') {
            append_parts(target, Fixed{va_arg(values, double), precision});
        } else if (*format == 'g') {
            append_parts(target, General{va_arg(values, double), precision});
        } else if (*format == 's') {
            const char* const text = va_arg(values, const char*);
            if (text == nullptr) return refuse();
            append_parts(target, text);
        } else if (*format == 'd') {
            append_parts(target, va_arg(values, int));
        } else if (*format == 'u') {
            append_parts(target, va_arg(values, unsigned));
        } else if (*format == 'l' && format[1] == 'u') {
            ++format;
            append_parts(target, va_arg(values, unsigned long));
        } else if (*format == '%') {
            append_parts(target, "%");
        } else {
            return refuse();
        }
        ++format;
    }
    append_parts(target, format);
    return target.size() - before < max_formatted_bytes || refuse();
}

}  // namespace tanrove
