#include "widgets/toolkit_quirks.h"

#include <glib-object.h>

namespace sontaro {

namespace {

gboolean Swallow(void*, void*, void*) { return TRUE; }

}  // namespace

/// The events of the arrow beside the text are none of the toolkit's C++ side.
void IgnoreWheel(wxComboBox& names) {
    g_signal_connect(names.GetHandle(), "scroll-event", G_CALLBACK(Swallow), nullptr);
}

/// Of each page that has left, its tab would be asked for its name.
TabBook::~TabBook() { g_object_set(GetHandle(), "show-tabs", FALSE, nullptr); }

}  // namespace sontaro
