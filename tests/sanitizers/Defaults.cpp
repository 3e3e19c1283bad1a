// Lists the findings that the sanitizers do not report. The lists are compiled into the program and the tests
// of a sanitizer build. Each finding lies in a library that is not built with sanitizers. A comment on each
// list gives the reason. A library that calls much of our code is not listed as a whole, because that would
// also hide the findings in all those calls.

extern "C" {
const char* __lsan_default_suppressions();
const char* __tsan_default_suppressions();
const char* __tsan_default_options();

// Lists the places whose memory leaks are not reported. Some libraries never free their caches. A D-Bus call
// of the status icon may be unfinished when the program ends, and then its memory is not freed.
const char* __lsan_default_suppressions() {
    return "leak:libfontconfig.so\n"
           "leak:libdbus-1.so\n"
           "leak:libQt6DBus.so\n";
}

// Lists libraries that are not built with the thread sanitizer. The thread sanitizer does not see their locks
// and atomics, so it would report data races in them that do not exist.
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
