#include "widgets/modal_dialogs.h"

namespace sontaro {

// The toolkit runs file and colour boxes in loops of its own and ends them as it does any dialog.
void CloseSystemBox() {}

}  // namespace sontaro
