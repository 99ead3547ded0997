#include <csignal>
#include <iostream>
#include <string>
#include <vector>

#include "cli/installed.hpp"
#include "cli/run.hpp"

int main(int argc, char** argv) {
  // A reader that went away is told by the failing write, not by a signal.
  std::signal(SIGPIPE, SIG_IGN);
  std::ios::sync_with_stdio(false);
  cli::declare_packaged();
  const std::vector<std::string> args(argv + 1, argv + argc);
  return cli::run(args, std::cin, std::cout, std::cerr);
}
