// Entry point of the program.
#include "app/application.h"

wxIMPLEMENT_APP(sontaro::CSontaroApp);
