// libFuzzer target: the project-file reader on arbitrary files. Every input
// must either load or be refused with ProjectFileError; anything else (a
// crash, another exception, a leak, a hang) is a finding.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <string>

#include "formats/project_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string path = "/tmp/orvik-fuzz-project-" + std::to_string(getpid()) + ".orv";
  FILE* file = std::fopen(path.c_str(), "wb");
  if (!file) return 0;
  std::fwrite(data, 1, size, file);
  std::fclose(file);
  try {
    const orvik::formats::Project project = orvik::formats::LoadProject(path);
    (void)project;
  } catch (const orvik::formats::ProjectFileError&) {
  }
  return 0;
}
