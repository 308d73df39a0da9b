// What the fuzzer and the sanitizers start with.

#include <algorithm>
#include <vector>

// A run allocates little and must be quick: what was freed is kept back for a few runs, and a report tells
// where a block came from in few steps. To see more of a fault:
// ASAN_OPTIONS=malloc_context_size=30:quarantine_size_mb=64
extern "C" const char* __asan_default_options() {
  return "quarantine_size_mb=1:thread_local_quarantine_size_kb=64:malloc_context_size=2:max_malloc_fill_size="
         "64";
}

extern "C" const char* __ubsan_default_options() { return "print_stacktrace=1"; }

// Puts the usual flags before those given, which count more. Weighing inputs by the rarity of what they reach
// costs several times as much as running them.
extern "C" int LLVMFuzzerInitialize(int* count, char*** words) {
  static const char* const kUsual[] = {"-entropic=0", "-len_control=0", "-max_len=1538",
                                       "-timeout=60", "-print_funcs=0", "-rss_limit_mb=1024"};
  static std::vector<char*> all;
  all.assign(*words, *words + *count);
  for (const char* flag : kUsual) all.insert(all.begin() + 1, const_cast<char*>(flag));
  *count = static_cast<int>(all.size());
  all.push_back(nullptr);
  *words = all.data();
  return 0;
}
