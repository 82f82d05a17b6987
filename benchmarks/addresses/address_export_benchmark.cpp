// The export of one archive of a store into each format.
#include <benchmark/benchmark.h>

#include <stdexcept>
#include <string>
#include <utility>

#include "addresses/address_export.h"
#include "platform/clock.h"
#include "platform/host_file_system.h"
#include "run/silent_front_end.h"
#include "store/address_item.h"
#include "store/embedded/embedded_store.h"
#include "store/vocabulary.h"
#include "support/temp_dir.h"
#include "support/test_store.h"

namespace velmora::addresses {
namespace {

template <typename Outcome>
void Check(const Outcome& outcome) {
  if (!outcome) throw std::runtime_error(outcome.error().Text);
}

void AddAddress(store::DvArchive& archive, std::int64_t number) {
  using store::AddressProperty;
  const auto view = archive.CreateItem(store::item_type::Address);
  Check(view);
  store::DvAddressItem& address = *(*view)->AsAddress();
  const auto set = [&](AddressProperty property, const std::string& text) {
    Check(address.Set(property, text));
  };
  const std::string digits = std::to_string(number);
  set(AddressProperty::DisplayName, "Müller & Söhne " + digits);
  set(AddressProperty::LastName, "Müller");
  set(AddressProperty::Street, "Große Straße " + digits);
  set(AddressProperty::City, "Köln");
  set(AddressProperty::EMail, "adresse" + digits + "@example.org");
  set(AddressProperty::Notes, "Erste Zeile\r\nZweite Zeile");
  Check(address.Item().Update());
}

void ExportTo(benchmark::State& state, AddressFormat format, const std::string& fileName) {
  const test::TempDir dir;
  const store::embedded::StoreLocation location{"BUERO", dir.HostPath("store")};
  test::CopyTestStore(test::BueroStore, location.HostDirectory);
  const auto files = platform::MakeHostFileSystem({{"Z:", "/"}, store::embedded::MappingOf(location)});
  auto account =
      store::embedded::OpenEmbeddedApi(*files, platform::SystemClock(), {location}, "anna")->Logon("");
  Check(account);
  store::Session session;
  session.Account = std::move(*account);
  AddressExportRequest request;
  request.ArchivePath = "/Archive/Gemeinsam";
  const auto archive = session.Account->GetArchive(request.ArchivePath);
  Check(archive);
  for (std::int64_t i = 0; i < state.range(0); ++i) AddAddress(**archive, i);
  Check(session.Account->Commit());

  run::SilentFrontEnd frontEnd;
  run::Run run(*files, platform::SystemClock(), frontEnd.Set(), dir.Path());
  request.Options.Format = format;
  request.Options.ShowSummary = false;
  request.Options.Target = {dir.Path("ziel\\"), fileName};
  for (auto _ : state) {
    state.PauseTiming();
    (void)files->DeleteFolder(dir.Path("ziel"), true);  // missing the first time
    Check(files->CreateFolder(dir.Path("ziel")));
    state.ResumeTiming();
    RunAddressExport(run, session, request);
    if (run.counters.Addresses != state.range(0)) throw std::runtime_error("addresses are missing");
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void Delimited(benchmark::State& state) { ExportTo(state, AddressFormat::Delimited, "a.csv"); }
void GroupWise(benchmark::State& state) { ExportTo(state, AddressFormat::GroupWise, "a.nab"); }
void Excel(benchmark::State& state) { ExportTo(state, AddressFormat::Excel, "a.xls"); }
void VCards(benchmark::State& state) { ExportTo(state, AddressFormat::VCard, ""); }
BENCHMARK(Delimited)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(GroupWise)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(Excel)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(VCards)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velmora::addresses
