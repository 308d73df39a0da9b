#include <cstdio>
#include <span>
#include <utility>

#include "host/host.h"
#include "host/options.h"
#include "platform/large_stack.h"

int main(int count, char** words) {
  namespace host = footlight::host;
  host::Parsed parsed = host::parseOptions(std::span<const char* const>(words + 1, words + count));
  if (!parsed.options) {
    std::fputs(parsed.message.c_str(), parsed.exitStatus == 0 ? stdout : stderr);
    return parsed.exitStatus;
  }
  int status = host::kNoStart;
  const bool started =
      footlight::platform::runOnLargeStack([&] { status = host::Host(std::move(*parsed.options)).run(); });
  if (!started) std::fputs("footlight: the machine gives no stack for the engine\n", stderr);
  return status;
}
