#include "link/link_services.h"

namespace sontaro {

NetworkSession::NetworkSession(LinkServices& services) {
    const NetworkStart start = services.io->Start();
    started_ = start == NetworkStart::kReady;
    if (start == NetworkStart::kFailed) services.prompts.Inform("WSAStartup err");
    if (start == NetworkStart::kWrongVersion) services.prompts.Inform("WSAStartup Ver err");
}

NetworkSession::~NetworkSession() {
    if (started_) StopNetwork();
}

}  // namespace sontaro
