// Findings that the sanitizers shall not report, compiled into the program and the tests of a sanitizer
// build. Each lies in a library that is not built with sanitizers, and has its reason here. A library that
// calls much of our code is not named as a whole, because its name would hide all those calls.

extern "C" {
const char* __lsan_default_suppressions();
const char* __tsan_default_suppressions();
const char* __tsan_default_options();

// Caches that their libraries never free, and a call of the status icon that may be on its way when the
// program ends.
const char* __lsan_default_suppressions() {
    return "leak:libfontconfig.so\n"
           "leak:libdbus-1.so\n"
           "leak:libQt6DBus.so\n";
}

// The sanitizer does not see the locks and atomics inside libraries that are not built with it.
const char* __tsan_default_suppressions() {
    return "called_from_lib:libQt6Core.so\n"
           "called_from_lib:libQt6Gui.so\n"
           "called_from_lib:libQt6Widgets.so\n"
           "called_from_lib:libQt6DBus.so\n"
           "called_from_lib:libQt6XcbQpa.so\n"
           "called_from_lib:libglib-2.0.so\n"
           "called_from_lib:libgio-2.0.so\n"
           "called_from_lib:libdbus-1.so\n"
           "deadlock:libglib-2.0.so\n";
}

const char* __tsan_default_options() {
    return "ignore_noninstrumented_modules=1";
}
}
