// Part of every test program under the sanitizers: tells the leak sanitizer the leaks that are meant, also where a
// program is started without ctest.

extern "C" const char* __lsan_default_options();

extern "C" const char* __lsan_default_options() {
  return "suppressions=" ZTCAD_TEST_LEAK_SUPPRESSIONS ":print_suppressions=0";
}
