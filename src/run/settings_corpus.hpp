// Samples of plug-in settings, for those who study how a plug-in keeps them: the block of the
// session and the state that was made of it, a pair of files each, and a table of all pairs.
#pragma once

#include <string>

#include "base/byte_view.hpp"
#include "plugins/plugin_insert.hpp"
#include "plugins/plugin_table_row.hpp"

namespace tanrove {

constexpr const char* corpus_table_name = "index.tsv";
/// Paths past this are not written.
constexpr std::size_t max_corpus_path_bytes = 1200;

class SettingsCorpus {
public:
    /// An empty `folder`: no samples are wanted. It is not made where it is missing.
    SettingsCorpus(std::string folder, std::string session_path)
        : folder_(std::move(folder)), session_path_(std::move(session_path)) {}

    /// Adds what an insert's block became, once for all inserts that are alike. A folder that
    /// cannot be written is told of once, on standard error, and nothing more is tried.
    void add(const PluginInsert& insert, const PluginTableRow& row, ByteView image,
             const std::string& state);

private:
    bool write_sample(const PluginInsert& insert, const PluginTableRow& row,
                      const std::string& block, const std::string& state) const;
    bool add_row(const std::string& cells) const;

    std::string folder_;
    std::string session_path_;
    bool failed_ = false;
};

}  // namespace tanrove
