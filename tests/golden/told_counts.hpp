// Counts what a project holds, from its text alone, and holds what the run told of it to that.
#pragma once

#include <string>

namespace tanrove::golden {

void expect_told_counts(const std::string& project, const std::string& account,
                        const std::string& report, const std::string& usage);

}  // namespace tanrove::golden
