// Linked into every test program: passes the list of intended leaks to the leak sanitizer, if the build has
// one. It also works when a test program is started without ctest.

extern "C" const char* __lsan_default_options();

extern "C" const char* __lsan_default_options() {
  return "suppressions=" ZTCAD_TEST_LEAK_SUPPRESSIONS ":print_suppressions=0";
}
