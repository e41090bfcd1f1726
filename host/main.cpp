#include "host/Program.h"

int main(int argc, char** argv) {
  return host::RunProgram(argc > 0 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>());
}
