velmora_library(embedded_tree
  SOURCES archive_tree.cpp archive_tree_check.cpp archive_tree_write.cpp directory_names.cpp list_cache.cpp
          record_properties.cpp
  LINK velmora_store velmora_platform velmora_base fmt::fmt)
