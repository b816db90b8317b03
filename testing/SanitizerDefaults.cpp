// Compiled into programs that draw texts and belong to a sanitized build, whose checks ask for
// these functions.
//
// Fontconfig keeps what it has read of the fonts until the process ends, behind pointers that the
// leak check can't follow, and the C library loses the list of folders that it makes of LOCPATH for
// each locale it loads. Pango reads the fonts in a thread of its own: the thread sanitizer sees
// that the memory is shared, but not the locks of libraries that are not built for it. A program
// that says nothing in other builds says nothing in these.

extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_options();
extern "C" const char* __tsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions() {
  return "leak:libfontconfig\nleak:argz_add_sep\n";
}
extern "C" const char* __lsan_default_options() { return "print_suppressions=0"; }
extern "C" const char* __tsan_default_suppressions() {
  return "called_from_lib:libcairo.so\n"
         "called_from_lib:libfontconfig.so\n"
         "called_from_lib:libglib-2.0.so\n"
         "called_from_lib:libharfbuzz.so\n"
         "called_from_lib:libpango-1.0.so\n"
         "called_from_lib:libpangoft2-1.0.so\n"
         "called_from_lib:libpangocairo-1.0.so\n";
}
