velmora_test(vcards SOURCES vcard_reader_test.cpp LINK velmora_vcards)
