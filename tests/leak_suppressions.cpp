// Part of every test program: tells the leak sanitizer, where there is one, which leaks are meant; also in a program
// that is started without ctest.

extern "C" const char* __lsan_default_options();

extern "C" const char* __lsan_default_options() {
  return "suppressions=" ZTCAD_TEST_LEAK_SUPPRESSIONS ":print_suppressions=0";
}
