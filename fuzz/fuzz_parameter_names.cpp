// Tables of parameter names, read from any text.
#include <algorithm>

#include "base/text_lines.hpp"
#include "fuzz/promise.hpp"
#include "plugins/parameter_names.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tanrove;
    const std::string_view text = input_view(data, size).text(0, size).value_or("");
    ParameterNames names;
    const int builds = names.add(text);
    promise(builds <= std::ranges::count(text, '\t') / 4, "a row has five fields");
    promise(names.add(text) == builds, "a table gives the same each time");
    names.finish();
    std::string_view rest = text;
    const std::string_view plugin = take_field(rest, '\t');
    const std::string_view build = take_field(rest, '\t');
    for (const auto ident : {build, std::string_view("none")}) {
        const ParameterTable* table = names.table_for(plugin, "", ident);
        if (table == nullptr) continue;
        for (const auto& [number, name] : table->names) {
            promise(number >= 0 && number < 1000000, "numbers have six digits");
            promise(!name.empty() && table->number_count.contains(name), "names are counted");
        }
    }
    return 0;
}
