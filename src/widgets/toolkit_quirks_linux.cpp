#include "widgets/toolkit_quirks.h"

#include <glib-object.h>

#include <algorithm>
#include <string_view>
#include <vector>

namespace sontaro {

namespace {

gboolean Swallow(void*, void*, void*) { return TRUE; }

using Hearer = std::function<void(const std::string&)>;

std::string FieldOf(const GLogField* fields, gsize count, std::string_view key) {
    const auto* field = std::find_if(fields, fields + count,
                                     [&](const GLogField& other) { return other.key == key; });
    return field == fields + count ? "" : static_cast<const char*>(field->value);
}

/// What is critical, whoever says so; warnings of the toolkit alone: those of other libraries are
/// about the machine. A drop-down that the program opens is no press that it could have seen.
bool IsComplaint(GLogLevelFlags level, const std::string& domain, std::string_view text) {
    constexpr const char* kToolkit[] = {"Gtk", "Gdk", "GLib-GObject", "Pango"};
    constexpr std::string_view kOpenedByProgram = "no trigger event for menu popup";
    if ((level & (G_LOG_LEVEL_ERROR | G_LOG_LEVEL_CRITICAL)) != 0) return true;
    return (level & G_LOG_LEVEL_WARNING) != 0 && text != kOpenedByProgram &&
           std::ranges::find(kToolkit, domain) != std::end(kToolkit);
}

GLogWriterOutput Write(GLogLevelFlags level, const GLogField* fields, gsize count, void* hearer) {
    const GLogWriterOutput written = g_log_writer_default(level, fields, count, nullptr);
    const std::string text = FieldOf(fields, count, "MESSAGE");
    if (IsComplaint(level, FieldOf(fields, count, "GLIB_DOMAIN"), text))
        (*static_cast<Hearer*>(hearer))(text);
    return written;
}

}  // namespace

void HearComplaints(Hearer hear) {
    g_log_set_writer_func(Write, new Hearer(std::move(hear)),
                          [](void* hearer) { delete static_cast<Hearer*>(hearer); });
}

/// Nothing is painted while they are shown.
void ScrollWithHidden(wxWindow& window, const std::function<void()>& scroll) {
    std::vector<wxWindow*> hidden;
    for (wxWindow* child : window.GetChildren())
        if (child->Show()) hidden.push_back(child);
    scroll();
    for (wxWindow* child : hidden) child->Hide();
}

/// The events of the arrow beside the text are none of the toolkit's C++ side.
void IgnoreWheel(wxControl& dropDown) {
    g_signal_connect(dropDown.GetHandle(), "scroll-event", G_CALLBACK(Swallow), nullptr);
}

/// Of each page that has left, its tab would be asked for its name.
TabBook::~TabBook() { g_object_set(GetHandle(), "show-tabs", FALSE, nullptr); }

}  // namespace sontaro
