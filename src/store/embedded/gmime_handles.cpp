#include "store/embedded/gmime_handles.h"

namespace velmora::store::embedded {

GMimeParserOptions* MailParserOptions() {
  static const bool isReady = (g_mime_init(), true);
  (void)isReady;  // only its initialisation counts
  return g_mime_parser_options_get_default();
}

}  // namespace velmora::store::embedded
