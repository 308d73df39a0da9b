// A shared library for the tests of module loading.
extern "C" __attribute__((visibility("default"))) int footlightTestAnswer();
int footlightTestAnswer() { return 42; }
