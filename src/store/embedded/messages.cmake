if(NOT TARGET velmora_embedded_sqlite)
  velmora_library(embedded_sqlite SOURCES sqlite.cpp LINK velmora_base SQLite::SQLite3 fmt::fmt)
endif()

velmora_library(embedded_messages
  SOURCES attachment_names.cpp content_decoder.cpp content_files.cpp database_pool.cpp encoded_words.cpp entry_check.cpp
          entry_store.cpp field_codec.cpp field_table.cpp gmime_handles.cpp html_rendition.cpp
          item_attachments.cpp item_fields.cpp item_view.cpp mail_composer.cpp mail_item.cpp mail_parser.cpp
          message_database.cpp message_item.cpp message_list_reading.cpp message_reading.cpp message_store.cpp message_view.cpp
          message_writing.cpp mime_structure.cpp move_journal.cpp move_recovery.cpp property_item.cpp share_references.cpp
  LINK velmora_embedded_sqlite velmora_store velmora_platform velmora_base fmt::fmt PkgConfig::GMIME)
