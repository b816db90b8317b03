// A library for tests that load one.

extern "C" {

[[gnu::visibility("default")]] extern int velumTestCount;
int velumTestCount = 0;

[[gnu::visibility("default")]] int VelumTestCountOn() { return ++velumTestCount; }

}  // extern "C"
