// XML documents whose parameters the AAX build calls otherwise than the VST builds: renamed where
// only the names differ, built anew where the VST build needs every parameter to be there.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tanrove {

/// One parameter of a VST build, in the order of its document.
struct DocumentParameter {
    std::string_view tag;
    std::string_view default_value;
    std::string_view control_id;  ///< what the AAX build calls it; empty: it has no such control
};

/// The parameters of one plug-in, as far as they are known.
struct DocumentTable {
    std::string_view code;
    std::size_t expected = 0;  ///< parameters of the VST build
    std::span<const DocumentParameter> known;
};

/// The table of this code; nullptr for a plug-in whose document is not built anew.
const DocumentTable* document_table(std::string_view code);

/// The document with the parameters' ids of the other build; of each id the first place only.
std::string with_renamed_parameters(std::string document);

/// The document with all parameters of the table in its order, each with the value that the
/// document has for it, else the default. A document without a list of parameters stays as it is.
std::string with_all_parameters(const std::string& document,
                                std::span<const DocumentParameter> parameters);

/// The version that a document states, as three bytes; 0 without one.
std::uint32_t document_version(std::string_view document);

}  // namespace tanrove
