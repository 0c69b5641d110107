#include "gtk_window.h"

#include <cstdlib>
#include <stdexcept>
#include <string>

#include <dlfcn.h>

namespace tamrix::tests {

namespace {

template <class Function>
Function* function(const char* name)
{
    void* const found = dlsym(RTLD_DEFAULT, name);
    if (found == nullptr) throw std::runtime_error{std::string{"the toolkit has no "} + name};
    return reinterpret_cast<Function*>(found);
}

}  // namespace

gtk_window gtk_window::in_front() { return gtk_window{function<void*()>("gtk_grab_get_current")()}; }

unsigned long gtk_window::number() const
{
    if (widget_ == nullptr) return 0;
    void* const window = function<void*(void*)>("gtk_widget_get_window")(widget_);
    return window != nullptr ? function<unsigned long(void*)>("gdk_x11_window_get_xid")(window) : 0;
}

bool gtk_window::has_keyboard() const
{
    return widget_ != nullptr && function<int(void*)>("gtk_window_is_active")(widget_);
}

void gtk_window::take_keyboard() const
{
    if (const unsigned long window = number(); window != 0)
        static_cast<void>(std::system(("xdotool windowfocus " + std::to_string(window)).c_str()));
}

void gtk_window::print_to(const std::string& file, const char* format) const
{
    void* const settings = function<void*()>("gtk_print_settings_new")();
    const auto set = function<void(void*, const char*, const char*)>("gtk_print_settings_set");
    set(settings, "printer", function<const char*(const char*, const char*)>("g_dgettext")("gtk30", "Print to File"));
    set(settings, "output-uri", ("file://" + file).c_str());
    set(settings, "output-file-format", format);
    function<void(void*, void*)>("gtk_print_unix_dialog_set_settings")(widget_, settings);
    function<void(void*)>("g_object_unref")(settings);
}

int letters_without_picture(const wxWindow& window, const std::string& text)
{
    void* const layout =
        function<void*(void*, const char*)>("gtk_widget_create_pango_layout")(window.GetHandle(), text.c_str());
    const int count = function<int(void*)>("pango_layout_get_unknown_glyphs_count")(layout);
    function<void(void*)>("g_object_unref")(layout);
    return count;
}

}  // namespace tamrix::tests
