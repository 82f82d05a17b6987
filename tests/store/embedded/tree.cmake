velmora_test(embedded_tree
  SOURCES tree_test.cpp tree_test_links.cpp tree_test_records.cpp tree_test_safety.cpp
  LINK velmora_embedded_tree velmora_store velmora_platform velmora_base)
