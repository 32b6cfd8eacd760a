// The names of the categories.
#pragma once

#include "batchsend/set_page_run.h"

class wxWindow;

namespace sontaro {

/// Shows the 64 categories with the names that players have, and marks those that they call
/// differently; each can be given another name, modally. Provisional ones stay meanwhile.
void EditCategories(wxWindow* parent, SetPageRun& run, Prompts& prompts);

}  // namespace sontaro
