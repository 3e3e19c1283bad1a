#pragma once

// xcb/xkb.h names a member `explicit`, which is a keyword of C++. Every file includes that header through
// this one, which renames the member.
#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicitActions
#include <xcb/xkb.h>
#undef explicit
#ifdef __clang__
#pragma clang diagnostic pop
#endif
