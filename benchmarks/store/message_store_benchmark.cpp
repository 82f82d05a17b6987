// The built-in store's messages: delivering, listing, and reading what an export reads of an entry.
#include <benchmark/benchmark.h>
#include <fmt/core.h>
#include <stdlib.h>

#include <filesystem>
#include <stdexcept>
#include <string>

#include "platform/clock.h"
#include "platform/host_file_system.h"
#include "store/embedded/message_store.h"
#include "store/filter.h"

namespace velmora::store::embedded {
namespace {

const std::string Archive = "\\\\ZEB\\DAVID\\archive";

// A store in a directory of its own, with `count` mails of 5 KB.
class FilledStore {
 public:
  explicit FilledStore(int count) {
    std::string pattern = (std::filesystem::temp_directory_path() / "velmora-benchmark-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary directory");
    directory_ = pattern;
    std::filesystem::create_directories(directory_ + "/archive");
    files_ = platform::MakeHostFileSystem({{"\\\\ZEB\\DAVID", directory_}});
    store_ = std::make_unique<MessageStore>(*files_, platform::SystemClock());
    for (int i = 0; i < count; ++i) Deliver(i);
    if (!store_->Commit()) throw std::runtime_error("commit failed");
  }
  ~FilledStore() {
    store_.reset();
    std::filesystem::remove_all(directory_);
  }

  void Deliver(int number) {
    if (!store_->Deliver(Archive, Mail(number), {})) throw std::runtime_error("delivery failed");
  }
  MessageStore& Store() { return *store_; }

 private:
  static std::string Mail(int number) {
    auto mail = fmt::format(
        "Return-Path: <list-bounces@example.org>\r\nReceived: from mx.example.org (mx.example.org "
        "[192.0.2.1])\r\n"
        "\tby mail.example.com with ESMTP id 4711; Mon, 2 Mar 2026 10:11:12 +0100\r\n"
        "From: =?utf-8?q?J=C3=B6rg_M=C3=BCller?= <joerg@example.org>\r\nTo: Liste <list@example.org>\r\n"
        "Cc: anna@example.org, bert@example.org\r\nSubject: [list] Re: Angebot {}\r\n"
        "Date: Mon, 2 Mar 2026 10:11:12 +0100\r\nMessage-ID: <{}@example.org>\r\nMIME-Version: 1.0\r\n"
        "Content-Type: text/plain; charset=iso-8859-1\r\nContent-Transfer-Encoding: 8bit\r\n\r\n",
        number, number);
    while (mail.size() < 5'000) mail += "Eine Zeile Text, wie sie in einer Mail an eine Liste steht.\r\n";
    return mail;
  }

  std::string directory_;
  std::unique_ptr<platform::FileSystem> files_;
  std::unique_ptr<MessageStore> store_;
};

void DeliverListMail(benchmark::State& state) {
  FilledStore filled(0);
  int number = 0;
  for (auto _ : state) filled.Deliver(number++);
  benchmark::DoNotOptimize(filled.Store().Commit());
  state.SetItemsProcessed(state.iterations());
}
// A fixed number of rounds: each call of the routine fills a store of its own.
BENCHMARK(DeliverListMail)->Unit(benchmark::kMicrosecond)->Iterations(20'000)->UseRealTime();

void ListArchive(benchmark::State& state) {
  FilledStore filled(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    auto entries = filled.Store().GetEntries(Archive, filter_preset::Default, EntryOrder::ByDate);
    benchmark::DoNotOptimize((*entries)->Count());
  }
}
BENCHMARK(ListArchive)->Arg(100'000)->Unit(benchmark::kMillisecond)->Iterations(20)->UseRealTime();

void ReadExportFields(benchmark::State& state) {
  constexpr int Mails = 1'000;
  FilledStore filled(Mails);
  EntryKey key = 0;
  for (auto _ : state) {
    key = key % Mails + 1;
    auto view = filled.Store().ItemView(Archive, key);
    auto* const mail = (*view)->AsMail();
    auto& fields = mail->Item().Fields();
    benchmark::DoNotOptimize(mail->Subject());
    benchmark::DoNotOptimize(mail->Sender());
    benchmark::DoNotOptimize(mail->RecipientText());
    benchmark::DoNotOptimize(mail->Date());
    benchmark::DoNotOptimize(mail->SendStatus());
    benchmark::DoNotOptimize(mail->HtmlIndicator());
    benchmark::DoNotOptimize(mail->Text());
    for (const auto tag : {tag::Flags, tag::MailFlags, tag::DisplayVariant, tag::Location, tag::Comment}) {
      benchmark::DoNotOptimize(fields.Get(tag));
    }
  }
}
BENCHMARK(ReadExportFields)->Unit(benchmark::kMicrosecond)->Iterations(50'000)->UseRealTime();

}  // namespace
}  // namespace velmora::store::embedded
