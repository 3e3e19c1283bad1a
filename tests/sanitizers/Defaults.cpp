// Compiled into the program and the tests of a sanitizer build: what those sanitizers shall not report. Only
// what lies in libraries that are not built with them, with the reason. No library that calls much of our own
// is named as a whole: its name would hide all that it calls.

extern "C" {
const char* __lsan_default_suppressions();
const char* __tsan_default_suppressions();
const char* __tsan_default_options();

// Caches that live as long as the process and that their libraries never free; and a call of the status icon
// that is on its way when the program ends.
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
