// The program wnck_reader. Reads the list of windows with libwnck, once for each line of standard input. If
// started with an argument, reads the list once and ends.

#define WNCK_I_KNOW_THIS_IS_UNSTABLE
#include "bench/comparison/Reader.h"

#include <algorithm>
#include <cstdlib>
#include <gtk/gtk.h>
#include <libwnck/libwnck.h>

namespace {

/// Makes libwnck learn about all changes, and reads the same facts of each window as Mirrolet does. Returns
/// how many windows have a title and all other facts.
std::size_t readWindows() {
    static auto* const handle = wnck_handle_new(WNCK_CLIENT_TYPE_PAGER);
    auto* screen = wnck_handle_get_default_screen(handle);
    wnck_screen_force_update(screen);
    std::size_t found = 0;
    std::size_t read = 0;
    for (const GList* each = wnck_screen_get_windows_stacked(screen); each != nullptr; each = each->next) {
        auto* window = WNCK_WINDOW(each->data);
        const char* group = wnck_window_get_class_group_name(window);
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
        wnck_window_get_geometry(window, &x, &y, &width, &height);
        read += wnck_window_get_pid(window) > 0 && group != nullptr && width > 0 && height > 0 ? 1 : 0;
        found += wnck_window_has_name(window) ? 1 : 0;
    }
    (void)wnck_screen_get_active_window(screen);
    return std::min(found, read);
}

/// Runs when standard input has a line, and then reads the list. The program waits for the line in GTK's main
/// loop, because libwnck handles changes of the windows only while that loop runs.
gboolean onInput(GIOChannel* input, GIOCondition /*condition*/, gpointer /*data*/) {
    gchar* line = nullptr;
    const bool ended = g_io_channel_read_line(input, &line, nullptr, nullptr, nullptr) != G_IO_STATUS_NORMAL;
    g_free(line);
    if (ended)
        gtk_main_quit();
    else
        mirrolet::bench::answerOnce(readWindows);
    return ended ? G_SOURCE_REMOVE : G_SOURCE_CONTINUE;
}

} // namespace

int main(int argumentCount, char** arguments) {
    gtk_init(&argumentCount, &arguments);
    if (argumentCount > 1) {
        mirrolet::bench::answerOnce(readWindows);
        return EXIT_SUCCESS;
    }
    auto* input = g_io_channel_unix_new(0);
    g_io_add_watch(input, GIOCondition(G_IO_IN | G_IO_HUP), onInput, nullptr);
    gtk_main();
    g_io_channel_unref(input);
    return EXIT_SUCCESS;
}
