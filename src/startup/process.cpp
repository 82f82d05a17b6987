#include "startup/process.h"

namespace velmora::startup {

void ReportFailure(Context& context, std::string_view title, std::string_view text, const Error& error) {
  if (context.process.BatchMode) {
    context.run.LogError(text, error);
  } else {
    context.prompts().Message(title, text, run::Icon::Stop);
  }
}

}  // namespace velmora::startup
