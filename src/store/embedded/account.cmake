velmora_library(embedded
  SOURCES access_control.cpp embedded_account.cpp embedded_archive.cpp embedded_store.cpp mail_address.cpp
          outgoing.cpp resources.cpp rule_file.cpp rule_list.cpp server_logs.cpp site_database.cpp
          store_layout.cpp store_check.cpp store_location.cpp store_session.cpp store_setup.cpp
  LINK velmora_embedded_tree velmora_embedded_messages velmora_embedded_sqlite velmora_store velmora_settings velmora_platform velmora_base
       fmt::fmt)
