// What an export does once per message: a name, a filled form, a descriptor; and what an index reads of it.
#include <benchmark/benchmark.h>

#include "mailarchive/format/descriptor.h"
#include "mailarchive/format/file_names.h"
#include "mailarchive/format/forms.h"
#include "mailarchive/format/page_text.h"

namespace velmora::mailarchive {
namespace {

// A form of the size of the standard one.
std::string MailForm() {
  std::string form = "<style>" + std::string(7'000, 'x') + "width: 100%;</style>\r\n";
  for (const auto* name : {"TITLE", "SUBJECT", "FROM", "TO", "TIME", "ATTLINKS", "EML", "MSGCOMMENT",
                           "COMMENT", "ARCDATE", "COPYRIGHT", "CONTENT"}) {
    form += "<p>%VELMORA_" + std::string(name) + "%</p>\r\n";
  }
  return form;
}

void Fill(benchmark::State& state, const std::string& subject) {
  const auto form = MailForm();
  std::string content;
  while (content.size() < static_cast<std::size_t>(state.range(0)))
    content += "Größere Menge zu 100 % geprüft<br>\r\n";
  const std::vector<FormValue> values = {
      {"%VELMORA_TITLE%", subject},      {"%VELMORA_SUBJECT%", subject},
      {"%VELMORA_FROM%", "a@b.example"}, {"%VELMORA_TO%", "c@d.example"},
      {"%VELMORA_TIME%", "01.01.2026"},  {"%VELMORA_ARCDATE%", "02.01.2026"},
      {"%VELMORA_COPYRIGHT%", "&copy;"}, {"%VELMORA_COMMENT%", "x"},
      {"%VELMORA_CONTENT%", content},    {"%VELMORA_MSGCOMMENT%", ""},
      {"%VELMORA_EML%", "<a>x</a>"},     {"%VELMORA_ATTLINKS%", ""},
  };
  for (auto _ : state) benchmark::DoNotOptimize(FillForm(form, values));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(form.size() + content.size()));
}
void BM_FillForm(benchmark::State& state) { Fill(state, "Angebot"); }
void BM_FillFormOneByOne(benchmark::State& state) { Fill(state, "Angebot %VELMORA_TO%"); }
BENCHMARK(BM_FillForm)->Arg(2'000)->Arg(1'000'000);
BENCHMARK(BM_FillFormOneByOne)->Arg(2'000)->Arg(1'000'000);

void BM_NeutralizeHeadTags(benchmark::State& state) {
  std::string text;
  while (text.size() < 100'000) text += "<p>Frank <frank@b.example> schrieb:</p>";
  for (auto _ : state) benchmark::DoNotOptimize(NeutralizeHeadTags(text));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(BM_NeutralizeHeadTags);

void BM_EntryBaseName(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(EntryBaseName("Re: AW: Größere Menge: 10 Stück / \"Büro\"?"));
}
BENCHMARK(BM_EntryBaseName);

EntryDescriptor Descriptor() {
  return {.Sortaddr = "max.mustermann@firma.example",
          .Subject = "Re: AW: Größere Menge zum Preis von 5 €",
          .Date = DateTime::FromSeconds(4'000'000'000),
          .From = "max.mustermann@firma.example",
          .To = "erika.musterfrau@amt.example",
          .Flags = 2,
          .MailArcEntry = "Re- AW- Groessere Menge_inf.htm",
          .MailArcAdd = "Re- AW- Groessere Menge_inf.add",
          .Body = "HTMLMails\\Re- AW- Groessere Menge.htm",
          .Eml = "Eml\\Re- AW- Groessere Menge.eml",
          .Attachments = {"Attachments\\a.pdf", "Attachments\\b.pdf"},
          .HasAttachments = true};
}
void BM_FormatDescriptor(benchmark::State& state) {
  const auto descriptor = Descriptor();
  for (auto _ : state) benchmark::DoNotOptimize(FormatDescriptor(descriptor));
}
void BM_ParseIndexFields(benchmark::State& state) {
  const auto bytes = FormatDescriptor(Descriptor());
  for (auto _ : state) benchmark::DoNotOptimize(ParseIndexFields(bytes));
}
void BM_ParseEntryFields(benchmark::State& state) {
  const auto bytes = FormatDescriptor(Descriptor());
  for (auto _ : state) benchmark::DoNotOptimize(ParseEntryFields(bytes));
}
BENCHMARK(BM_FormatDescriptor);
BENCHMARK(BM_ParseIndexFields);
BENCHMARK(BM_ParseEntryFields);

}  // namespace
}  // namespace velmora::mailarchive
