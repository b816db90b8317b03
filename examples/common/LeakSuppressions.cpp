// Compiled into the programs of a build with the address sanitizer, whose leak check asks for these
// functions. Fontconfig keeps what it has read of the fonts until the process ends, behind pointers
// that the check can't follow. A program that says nothing in other builds says nothing in this
// one.

extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_options();

extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig\n"; }
extern "C" const char* __lsan_default_options() { return "print_suppressions=0"; }
