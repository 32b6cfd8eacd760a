// Entry point of the program.
#include "app/application.h"
#include "tour/tour_walk.h"

namespace {

class Program : public sontaro::CSontaroApp {
   public:
    Program() : CSontaroApp(sontaro::MakeTourWalk) {}
};

}  // namespace

wxIMPLEMENT_APP(Program);
