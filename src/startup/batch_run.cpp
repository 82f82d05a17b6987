#include "startup/batch_run.h"

#include <fmt/format.h>

#include <utility>

#include "platform/host.h"
#include "startup/result_mail.h"

namespace velmora::startup {
namespace {

constexpr std::string_view LogOrigin = "RunControlFile";
constexpr std::string_view StorePrefix = "DvISE-Error ";

}  // namespace

MomentTexts MomentNow(platform::Clock& clock) {
  const DateTime now = clock.Now();
  return {FormatDate(now), FormatTime(now), platform::ComputerName()};
}

BatchRun::BatchRun(Context& context, ControlFile file, std::string name, std::string path)
    : context_(context),
      file_(std::move(file)),
      name_(std::move(name)),
      path_(std::move(path)),
      startMilliseconds_(context.clock.SteadyMilliseconds()) {}

void BatchRun::LogFailure(std::string_view object, int number, std::string_view text) {
  context_.run.LogError(fmt::format("{}: {}", text, object), std::int64_t{number}, LogOrigin,
                        run::Severity::Error);
}

void BatchRun::LogStoreFailure(std::string_view object, const Error& error) {
  LogFailure(object, error.Number, std::string(StorePrefix) + error.Text);
}

void BatchRun::ResetRunCounters() {
  earlierErrors_ += context_.run.counters.Errors;
  context_.run.ResetRunCounters();
}

bool BatchRun::HadErrors() { return earlierErrors_ + context_.run.counters.Errors > 0; }

void BatchRun::SendMail(const Replacements& bodyValues, std::string_view attachments) {
  if (!file_.Mail.Send) {
    return;
  }
  const Replacements moment = MomentReplacements(MomentNow(context_.clock));
  const std::int64_t seconds = (context_.clock.SteadyMilliseconds() - startMilliseconds_) / 1000;
  Replacements body = moment;
  body.emplace_back("%4", fmt::format("{}s", seconds));
  body.insert(body.end(), bodyValues.begin(), bodyValues.end());
  body.emplace_back("\\n", "\r\n");
  const Status sent = SendResultMail(context_.session, file_.Mail.To, file_.Mail.From,
                                     ReplacePlaceholders(file_.Mail.Subject, moment),
                                     ReplacePlaceholders(file_.Mail.Body, body), attachments);
  if (!sent) {
    LogStoreFailure(fmt::format("Ergebnismail an \"{}\"", file_.Mail.To), sent.error());
  }
  if (const auto warning = context_.session.Account->TakeWarning()) {
    context_.run.LogError("Serverprotokoll", *warning, run::Severity::Warning);
  }
}

}  // namespace velmora::startup
