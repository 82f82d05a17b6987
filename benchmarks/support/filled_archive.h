// The archive that benchmarks of lists work on: its messages have an attachment and two recipients each.
#pragma once

#include <fmt/core.h>

#include <memory>
#include <stdexcept>

#include "store/embedded/embedded_store.h"
#include "store/session.h"

namespace velmora::benchmarks {

template <typename T>
T Must(Result<T> result) {
  if (!result) throw std::runtime_error(result.error().Text);
  return *std::move(result);
}

// "Ablage" below the default archive, with `count` messages in no order.
inline std::shared_ptr<store::DvArchive> FillArchive(store::Session& session, int count) {
  const auto archive = Must(session.DefaultArchive->CreateSubArchive("Ablage"));
  for (int i = 0; i < count; ++i) {
    const auto mail = fmt::format(
        "From: =?utf-8?q?J=C3=B6rg_M=C3=BCller?= <joerg{0}@example.org>\r\n"
        "To: Liste <list@example.org>, anna@example.org\r\nSubject: Re: Angebot {1:06}\r\n"
        "Date: Mon, {2} Mar 2026 10:11:12 +0100\r\nContent-Type: multipart/mixed; boundary=b\r\n\r\n"
        "--b\r\n\r\nText\r\n--b\r\nContent-Disposition: attachment; "
        "filename=angebot{0}.pdf\r\n\r\nx\r\n--b--\r\n",
        i % 97, (i * 7919LL) % 100'003, 1 + i % 28);
    (void)Must(store::embedded::DeliverMessage(*session.Account, *archive, mail, {}));
  }
  if (!session.Account->Commit()) throw std::runtime_error("commit failed");
  return archive;
}

}  // namespace velmora::benchmarks
