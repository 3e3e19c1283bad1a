#pragma once

// xcb/xkb.h names a member `explicit`. Included through here everywhere, so that the name is bent in one
// place.
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
