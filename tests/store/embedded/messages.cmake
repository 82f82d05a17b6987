velmora_test(embedded_messages
  SOURCES message_store_test.cpp
  LINK velmora_embedded_messages)
