#include "link/link_services.h"

namespace sontaro {

NetworkSession::NetworkSession(LinkServices& services) {
    const NetworkStart start = services.io->Start();
    started_ = start == NetworkStart::kReady;
    if (start == NetworkStart::kFailed) services.prompts.Warn("WSAStartup err");
    if (start == NetworkStart::kWrongVersion) services.prompts.Warn("WSAStartup Ver err");
}

NetworkSession::~NetworkSession() {
    if (started_) StopNetwork();
}

}  // namespace sontaro
