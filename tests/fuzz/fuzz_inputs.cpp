// Feeds spoilt files to the program's readers and to a whole program for a while; see HostileInputs and
// HostileFiles.
//   fuzz_inputs [--seconds N] [--seed N]

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>

#include "fakes/HostileFiles.h"
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
    HostileInputs inputs(seed);
    HostileFiles files(seed);
    HostileInputs::Counts counts;
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    while (std::chrono::steady_clock::now() < end) {
      counts = inputs.TryOne();
      files.TryOne();
    }
    std::printf("seed %u: %ld pictures, %ld of them taken; %ld ini files; %ld tabs' files; %ld histories\n",
                seed, counts.Pictures, counts.Taken, counts.IniFiles, counts.Tabs, counts.Histories);
    for (const HostileFiles::Kind& kind : files.Kinds())
      std::printf("%ld %s, %ld of them refused\n", kind.tried, kind.name, kind.refused);
  } catch (const std::exception& wrong) {
    std::fprintf(stderr, "%s: see the file hostile-input\n", wrong.what());
    return 1;
  }
}
