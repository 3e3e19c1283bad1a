// Compiled into the program and the tests of a sanitizer build: what those sanitizers shall not report. Only
// what lies in libraries that are not built with them, with the reason; nothing of our own.

extern "C" {
const char* __lsan_default_suppressions();
const char* __tsan_default_suppressions();
const char* __tsan_default_options();

// Caches that live as long as the process and that their libraries never free.
const char* __lsan_default_suppressions() {
    return "leak:libfontconfig.so\n"
           "leak:libdbus-1.so\n"
           "leak:libgio-2.0.so\n"
           "leak:libglib-2.0.so\n";
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
           "race:libQt6Core.so\n"
           "race:libQt6Gui.so\n"
           "race:libQt6DBus.so\n"
           "race:libglib-2.0.so\n"
           "race:libgio-2.0.so\n"
           "deadlock:libglib-2.0.so\n";
}

const char* __tsan_default_options() {
    return "ignore_noninstrumented_modules=1";
}
}
