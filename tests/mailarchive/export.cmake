velmora_test(mailarchive_export
  SOURCES address_export_test.cpp content_index_test.cpp export_walk_test.cpp fax_export_test.cpp links_test.cpp mail_page_test.cpp move_notes_test.cpp move_test.cpp
          name_clash_test.cpp odd_names_test.cpp only_branches_test.cpp send_status_test.cpp voice_export_test.cpp
  LINK velmora_mailarchive velmora_fake_store)

velmora_test(mailarchive_store
  SOURCES export_store_test.cpp
  LINK velmora_mailarchive velmora_embedded velmora_test_store)
