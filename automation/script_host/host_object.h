#pragma once

#include "automation/object_model/class_table.h"
#include "automation/vbscript/vbscript.h"

namespace zentrel {

/// An object of the program in a script's hands: its class's members by name, failures as the
/// language's errors.
class ProgramObject final : public vbscript::HostObject {
  public:
    explicit ProgramObject(objects::ObjectRef object) : object_(std::move(object)) {}

    const objects::ObjectRef& object() const { return object_; }

    std::string_view ClassName() const override { return object_.table().name(); }
    const void* MemberTable() const override { return &object_.table(); }
    std::optional<vbscript::Member> FindMember(std::u16string_view name) const override;
    std::optional<vbscript::Member> DefaultMember() const override;

    vbscript::Value Get(int slot, vbscript::Arguments args) override;
    void Set(int slot, vbscript::Arguments args, const vbscript::Value& value) override;
    void SetRef(int slot, vbscript::Arguments args, const vbscript::Value& value) override {
        Set(slot, args, value);
    }
    bool IsSame(const vbscript::HostObject& other) const override;
    std::unique_ptr<vbscript::Enumerator> Enumerate() override;

  private:
    const objects::Member& At(int slot) const {
        return object_.table().members()[static_cast<std::size_t>(slot)];
    }

    objects::ObjectRef object_;
};

} // namespace zentrel
