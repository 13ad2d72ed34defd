// Feeds spoilt files to the program's readers for a while; see HostileInputs.
//   fuzz_inputs [--seconds N] [--seed N]

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>

#include "fakes/HostileInputs.h"

int main(int argc, char** argv) {
  int seconds = 60;
  uint32_t seed = 1;
  for (int i = 1; i + 1 < argc; i += 2) {
    if (std::strcmp(argv[i], "--seconds") == 0) seconds = std::atoi(argv[i + 1]);
    if (std::strcmp(argv[i], "--seed") == 0)
      seed = static_cast<uint32_t>(std::strtoul(argv[i + 1], nullptr, 10));
  }
  try {
    const HostileInputs::Counts counts = HostileInputs(seed).Run(std::chrono::seconds(seconds));
    std::printf("seed %u: %ld pictures, %ld of them taken; %ld ini files\n", seed, counts.Pictures,
                counts.Taken, counts.IniFiles);
  } catch (const std::exception& wrong) {
    std::fprintf(stderr, "%s: see the file hostile-input\n", wrong.what());
    return 1;
  }
}
