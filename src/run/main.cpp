// The program: a command line in, an exit code out.
#include <string>
#include <vector>

#include "base/platform.hpp"
#include "run/convert_session.hpp"
#include "run/learn_plugin.hpp"
#include "run/process_guard.hpp"
#include "run/run_driver.hpp"
#include "run/run_files.hpp"

int main(int argument_count, char** arguments) {
    tanrove::guard_process();
    const auto words = tanrove::command_words(argument_count, arguments);
    std::vector<const char*> texts;
    texts.reserve(words.size());
    for (const std::string& word : words) texts.push_back(word.c_str());
    tanrove::RunSteps steps;
    steps.convert = tanrove::convert_session;
    steps.learn = tanrove::learn_plugin;
    steps.write_usage_summary = tanrove::write_usage_file;
    return tanrove::run_tanrove(static_cast<int>(texts.size()), texts.data(), steps);
}
