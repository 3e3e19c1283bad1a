#pragma once

#include <glib.h>

#include <memory>

namespace mirrolet::platform {

/// User data for GLib's callbacks: a weak pointer on the heap, because a callback may come after the object
/// has gone. drop() is the function that frees the data.
template <typename T> struct GLibUserData {
    static gpointer hold(const std::shared_ptr<T>& object) { return new std::weak_ptr<T>(object); }
    static void drop(gpointer data) { delete static_cast<std::weak_ptr<T>*>(data); }
    static std::shared_ptr<T> held(gpointer data) { return static_cast<std::weak_ptr<T>*>(data)->lock(); }
};

} // namespace mirrolet::platform
