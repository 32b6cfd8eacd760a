// Who has a player served.
#pragma once

#include "batchsend/upload_status.h"

namespace sontaro {

/// Whoever owns the upload to a player; hears everything within the calls of the upload.
class UploadOwner {
   public:
    virtual ~UploadOwner() = default;
    /// `event.player` is for the owner to fill in.
    virtual void Heard(UploadEvent event) = 0;
    /// Row, line or figures have changed.
    virtual void Changed() = 0;
    /// The upload has come to its end and does nothing more. It must not be destroyed yet.
    virtual void Ended(UploadStatus status, UploadNote note) = 0;
};

}  // namespace sontaro
