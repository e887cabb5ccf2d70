#pragma once

#include "automation/vbscript/value.h"

#include <cstdint>
#include <span>
#include <vector>

namespace zentrel::vbscript {

/// The storage of an array: dimensions that count from 0, elements with the first dimension
/// running fastest (so that the last one can grow in place).
class ArrayData : public Counted {
  public:
    static constexpr std::size_t kMaxDimensions = 60;

    /// `upper` are upper bounds, -1 for none. Error 9 for a bound below -1, 7 for too many
    /// elements. No bounds: an array that was never dimensioned.
    static Handle<ArrayData> New(std::span<const std::int64_t> upper, bool fixed);
    static Handle<ArrayData> Copy(const ArrayData& other);
    static Handle<ArrayData> FromValues(std::span<const Value> values);

    std::size_t Dimensions() const { return sizes_.size(); }
    /// Upper bound of a dimension that counts from 1; error 9 when there is none.
    std::int64_t Upper(std::int64_t dimension) const;
    std::size_t Count() const { return elements_.size(); }
    std::span<Value> Elements() { return elements_; }
    std::span<const Value> Elements() const { return elements_; }
    bool Fixed() const { return fixed_; }
    bool Locked() const { return locks_ != 0; }
    void Lock() { ++locks_; }
    void Unlock() { --locks_; }

    /// The element's place; error 9 when an index or their number is wrong.
    std::size_t Place(std::span<const std::int64_t> indices) const;
    Value& At(std::size_t place) { return elements_[place]; }
    const Value& At(std::size_t place) const { return elements_[place]; }
    /// The element of a one-dimensional array, or null.
    Value* Element(std::int64_t index) {
        return sizes_.size() == 1 && static_cast<std::size_t>(index) < elements_.size()
                   ? &elements_[static_cast<std::size_t>(index)]
                   : nullptr;
    }
    /// ReDim Preserve: only the last bound may differ (9).
    void Resize(std::span<const std::int64_t> upper);
    /// Erase of a fixed array: every element Empty again.
    void Blank();

    ~ArrayData() override;

  private:
    ArrayData() = default;
    void SetBounds(std::span<const std::int64_t> upper);

    std::vector<std::int64_t> sizes_;
    std::vector<Value> elements_;
    std::size_t charged_ = 0;
    std::uint32_t locks_ = 0;
    bool fixed_ = false;
};

/// An element on loan to a ByRef parameter: its array can't change shape meanwhile.
class ElementReference : public Counted {
  public:
    ElementReference(Handle<ArrayData> array, std::size_t place)
        : array_(std::move(array)), element_(&array_->At(place)) {
        array_->Lock();
    }
    ~ElementReference() override { array_->Unlock(); }
    Value& Element() const { return *element_; }

  private:
    Handle<ArrayData> array_;
    Value* element_;
};

} // namespace zentrel::vbscript
