#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-output-memory.h>

#include <array>
#include <memory>

#include "platform/file_system.h"
#include "tables/compound_file.h"

namespace velmora::tables {
namespace {

struct ReleaseGObject {
  void operator()(gpointer object) const { g_object_unref(object); }
};
template <typename T>
using GObjectHandle = std::unique_ptr<T, ReleaseGObject>;

// {00020820-0000-0000-C000-000000000046}, the class of workbooks of Excel 97 and later: what a double click
// on a file without an extension, or on an embedded one, goes by.
constexpr std::array<guint8, 16> WorkbookClass = {0x20, 0x08, 0x02, 0x00, 0x00, 0x00, 0x00, 0x00,
                                                  0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46};

const guint8* AsBytes(std::string_view bytes) { return reinterpret_cast<const guint8*>(bytes.data()); }

}  // namespace

Result<std::string> MakeCompoundFile(std::string_view workbookStream) {
  const auto failed = [] {
    return Fail(platform::file_error::DeviceError, "Die Arbeitsmappe konnte nicht zusammengestellt werden");
  };
  const GObjectHandle<GsfOutput> memory(gsf_output_memory_new());
  const GObjectHandle<GsfOutfile> container(gsf_outfile_msole_new(memory.get()));
  if (!container ||
      !gsf_outfile_msole_set_class_id(GSF_OUTFILE_MSOLE(container.get()), WorkbookClass.data())) {
    return failed();
  }
  const GObjectHandle<GsfOutput> stream(gsf_outfile_new_child(container.get(), "Workbook", FALSE));
  const bool isWritten = stream &&
                         gsf_output_write(stream.get(), workbookStream.size(), AsBytes(workbookStream)) &&
                         gsf_output_close(stream.get()) && gsf_output_close(GSF_OUTPUT(container.get()));
  if (!isWritten) return failed();
  const guint8* bytes = gsf_output_memory_get_bytes(GSF_OUTPUT_MEMORY(memory.get()));
  return std::string(reinterpret_cast<const char*>(bytes),
                     static_cast<std::size_t>(gsf_output_size(memory.get())));
}

}  // namespace velmora::tables
