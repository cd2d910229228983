// Counts what a project holds, from its text alone, and holds what the run told of it to that.
#pragma once

#include <string>

namespace tanrove::builder {

/// `parallel_receives`: of sends that more than one aux takes, all but the first.
void expect_told_counts(const std::string& project, const std::string& account,
                        const std::string& report, const std::string& usage,
                        int parallel_receives = 0);

}  // namespace tanrove::builder
