velmora_test(mailarchive_format
  SOURCES format/descriptor_test.cpp format/design_set_test.cpp format/file_names_test.cpp format/fill_form_test.cpp
          format/marker_test.cpp format/page_text_test.cpp format/standard_design_test.cpp format/text_file_test.cpp
  LINK velmora_mailarchive_format)
target_compile_definitions(test_mailarchive_format PRIVATE VELMORA_DESIGNS="${CMAKE_BINARY_DIR}/bin/Designs")

velmora_test(mailarchive_entry_operations
  SOURCES entry_operations_test.cpp
  LINK velmora_mailarchive)
