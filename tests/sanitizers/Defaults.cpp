// Lists the findings that the sanitizers shall not report. The lists are compiled into the program and the
// tests of a sanitizer build. Each finding lies in a library that is not built with sanitizers, and each list
// states its reason. A library that calls much of our code is not named as a whole, because its name would
// hide all those calls.

extern "C" {
const char* __lsan_default_suppressions();
const char* __tsan_default_suppressions();
const char* __tsan_default_options();

// Lists leaks of two kinds. Some libraries never free their caches. A call of the status icon may be
// unfinished when the program ends.
const char* __lsan_default_suppressions() {
    return "leak:libfontconfig.so\n"
           "leak:libdbus-1.so\n"
           "leak:libQt6DBus.so\n";
}

// Lists libraries that are not built with the sanitizer, because it does not see their locks and atomics.
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
