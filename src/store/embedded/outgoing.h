// What happens to a mail that is submitted: it is delivered to the users of the store whose mail address it
// names, and handed to the site's sendmail program for all others.
#pragma once

#include <string_view>

#include "base/result.h"
#include "store/embedded/store_session.h"
#include "store/item.h"

namespace velmora::store::embedded {

// `mail` stands in its archive under `key`. Afterwards its send status is 0 where every recipient has been
// served, else 43 ("Mail Server nicht erreichbar"): a recipient that nobody takes, an address that is
// refused, a program that is missing or fails. An error only when the entry itself cannot be read or written.
//
// What users get is noted in the receive log, the mail itself in the send log.
Status SubmitMail(StoreSession& session, DvMailItem& mail, EntryKey key);

// Notes in the receive log that a mail stands in an archive. `origin`: where it came from, "" for unknown.
void LogDelivery(StoreSession& session, std::string_view directory, EntryKey key, std::string_view origin);

}  // namespace velmora::store::embedded
