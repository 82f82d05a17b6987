# Headers of the standard library and of other libraries, compiled once per kind of code: to parse them for each file
# is a third of a build. Off (VELMORA_PRECOMPILED), each file must itself include what it uses.

# velmora_precompiled(NAME HEADERS ... LINK ... OPTIONS ...): the set NAME. LINK and OPTIONS are those of its users.
function(velmora_precompiled name)
  if(NOT VELMORA_PRECOMPILED)
    return()
  endif()
  cmake_parse_arguments(ARG "" "" "HEADERS;LINK;OPTIONS" ${ARGN})
  set(carrier ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
  file(CONFIGURE OUTPUT ${carrier} CONTENT "// Carries precompiled headers.\n")
  add_library(velmora_${name} OBJECT ${carrier})
  target_link_libraries(velmora_${name} PRIVATE velmora_flags ${ARG_LINK})
  target_compile_options(velmora_${name} PRIVATE ${ARG_OPTIONS})
  target_precompile_headers(velmora_${name} PRIVATE ${ARG_HEADERS})
endfunction()

# velmora_reuse(TARGET NAME): TARGET is compiled with the set NAME.
function(velmora_reuse target name)
  if(VELMORA_PRECOMPILED)
    target_precompile_headers(${target} REUSE_FROM velmora_${name})
  endif()
endfunction()

set(velmora_standard_headers
    <algorithm> <array> <chrono> <cstdint> <filesystem> <functional> <map> <memory> <optional> <set> <span> <string>
    <string_view> <unordered_map> <utility> <variant> <vector> <fmt/format.h> <tl/expected.hpp>)
set(velmora_window_headers
    <QApplication> <QComboBox> <QDialog> <QDialogButtonBox> <QElapsedTimer> <QGridLayout> <QHBoxLayout> <QKeyEvent>
    <QLabel> <QLineEdit> <QListWidget> <QPlainTextEdit> <QPushButton> <QTimer> <QToolBar> <QToolButton> <QTreeWidget>
    <QVBoxLayout>)
