velmora_test(embedded_messages
  SOURCES html_rendition_test.cpp item_view_test.cpp list_reading_test.cpp mail_parser_test.cpp message_item_test.cpp message_safety_test.cpp message_store_test.cpp move_recovery_test.cpp
  LINK velmora_embedded_messages)
