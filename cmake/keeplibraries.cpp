// Part of every program that is built for the leak sanitizer: keeps shared libraries in memory until the program ends.
//
// An OpenGL driver is unloaded before leaks are looked for. What only its own variables pointed at then counts as
// leaked, from an unknown place or, worse, from whatever library has been loaded to the same addresses since. With the
// driver still there it is not reported at all, and needs no suppression that could hide a leak of ours.
extern "C" __attribute__((visibility("default"))) int dlclose(void* /*library*/) {
    return 0;
}
