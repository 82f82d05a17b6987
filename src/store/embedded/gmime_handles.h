// GMime in this program's terms: handles that release themselves, one initialisation, one set of options.
#pragma once

#include <gmime/gmime.h>

#include <memory>

namespace velmora::store::embedded {

struct ReleaseGObject {
  void operator()(gpointer object) const { g_object_unref(object); }
};
template <typename T>
using GObjectHandle = std::unique_ptr<T, ReleaseGObject>;

struct FreeGMemory {
  void operator()(gpointer memory) const { g_free(memory); }
};
using GTextHandle = std::unique_ptr<char, FreeGMemory>;

// Initialises GMime at the first call of the process; every use of GMime comes by here first.
GMimeParserOptions* MailParserOptions();

}  // namespace velmora::store::embedded
