// The fields of an item object.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "store/embedded/entry_record.h"
#include "store/fields.h"

namespace velmora::store::embedded {

class MessageItem;
struct FieldInfo;

class ItemFields : public DvFields {
 public:
  explicit ItemFields(MessageItem& item) : item_(item) {}

  Result<FieldValue> Get(FieldTag tag) override;
  Result<FieldValue> Get(std::string_view name) override;
  Status Set(FieldTag tag, FieldValue value) override;
  Status Set(std::string_view name, FieldValue value) override;
  Result<int> Count() override;
  Result<std::unique_ptr<DvField>> Item(int index) override;

 private:
  struct Present {
    FieldTag Tag = 0;
    std::string Name;
  };

  Result<FieldValue> GetKnown(const FieldInfo& field);
  Status SetKnown(const FieldInfo& field, FieldValue value);
  Result<bool> HasValue(const FieldInfo& field);
  Result<FieldValue> Rendition();
  Result<FieldValue> RecipientTexts(RecipientRole role);
  Status SetRecipientTexts(RecipientRole role, const FieldValue& value);
  Result<std::vector<Present>> PresentFields();

  MessageItem& item_;
};

// Fields that have a name and no tag.
class ItemUserFields : public DvFields {
 public:
  explicit ItemUserFields(MessageItem& item) : item_(item) {}

  Result<FieldValue> Get(FieldTag tag) override;
  Result<FieldValue> Get(std::string_view name) override;
  Status Set(FieldTag tag, FieldValue value) override;
  Status Set(std::string_view name, FieldValue value) override;
  Result<int> Count() override;
  Result<std::unique_ptr<DvField>> Item(int index) override;

 private:
  MessageItem& item_;
};

}  // namespace velmora::store::embedded
