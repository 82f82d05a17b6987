velmora_test(embedded_account
  SOURCES access_test.cpp archive_entries_test.cpp account_test.cpp archive_test.cpp outgoing_test.cpp rules_test.cpp server_logs_test.cpp
          store_check_test.cpp store_location_test.cpp
  LINK velmora_embedded velmora_test_store)
