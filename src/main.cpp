// Entry point of the program.
#include "app/application.h"
#include "tour/tour_walk.h"

namespace sontaro {

class Program : public CSontaroApp {
   public:
    Program() : CSontaroApp(MakeTourWalk) {}
};

}  // namespace sontaro

wxIMPLEMENT_APP(sontaro::Program);
