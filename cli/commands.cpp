#include "cli/command.hpp"

namespace cli {

std::vector<std::unique_ptr<Command>> all_commands() {
  std::vector<std::unique_ptr<Command>> commands;
  commands.push_back(make_anonymize_command());
  commands.push_back(make_batch_command());
  commands.push_back(make_restore_command());
  commands.push_back(make_analyze_command());
  commands.push_back(make_recognizers_command());
  commands.push_back(make_models_command());
  commands.push_back(make_evaluate_command());
  return commands;
}

}  // namespace cli
