// Compiled into the programs of a build with the address sanitizer, whose leak check asks for this
// function. Fontconfig keeps what it has read of the fonts until the process ends, behind pointers
// that the check can't follow.

extern "C" const char* __lsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig\n"; }
