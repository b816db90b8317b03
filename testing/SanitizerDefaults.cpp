// Part of the test programs of the subsystems, whose thread checks ask for this function.
//
// oneTBB keeps its tasks in memory that threads hand to each other by its own library, which is not
// built for the thread sanitizer. Only its own functions are left out, not what they call.

extern "C" const char* __tsan_default_suppressions();

extern "C" const char* __tsan_default_suppressions() { return "race_top:tbb::detail\n"; }
