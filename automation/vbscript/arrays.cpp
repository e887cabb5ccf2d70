#include "automation/vbscript/arrays.h"

#include "automation/vbscript/errors.h"

namespace zentrel::vbscript {
namespace {

constexpr std::size_t kMaxElements = std::size_t{1} << 27;

} // namespace

ArrayData::~ArrayData() {
    memory::Discharge(charged_);
}

void ArrayData::SetBounds(std::span<const std::int64_t> upper) {
    if (upper.size() > kMaxDimensions) Raise(ErrorNumber::SubscriptOutOfRange);
    std::size_t count = upper.empty() ? 0 : 1;
    std::vector<std::int64_t> sizes;
    for (const auto bound : upper) {
        if (bound < -1) Raise(ErrorNumber::SubscriptOutOfRange);
        const auto size = static_cast<std::size_t>(bound + 1);
        if (size != 0 && count > kMaxElements / size) Raise(ErrorNumber::OutOfMemory);
        count *= size;
        sizes.push_back(bound + 1);
    }
    const auto bytes = count * sizeof(Value);
    if (bytes > charged_) memory::Charge(bytes - charged_);
    if (bytes < charged_) memory::Discharge(charged_ - bytes);
    charged_ = bytes;
    // What goes dies only when the array is whole again: a Class_Terminate may look at it.
    std::vector<Value> doomed;
    for (std::size_t i = count; i < elements_.size(); ++i)
        doomed.push_back(std::move(elements_[i]));
    elements_.resize(count);
    sizes_ = std::move(sizes);
}

Handle<ArrayData> ArrayData::New(std::span<const std::int64_t> upper, bool fixed) {
    Handle<ArrayData> array(new ArrayData);
    array->SetBounds(upper);
    array->fixed_ = fixed;
    return array;
}

Handle<ArrayData> ArrayData::Copy(const ArrayData& other) {
    Handle<ArrayData> array(new ArrayData);
    memory::Charge(other.charged_);
    array->charged_ = other.charged_;
    array->sizes_ = other.sizes_;
    array->elements_ = other.elements_;
    array->fixed_ = other.fixed_;
    return array;
}

Handle<ArrayData> ArrayData::FromValues(std::span<const Value> values) {
    const std::int64_t upper = static_cast<std::int64_t>(values.size()) - 1;
    auto array = New({&upper, 1}, false);
    for (std::size_t i = 0; i < values.size(); ++i)
        array->elements_[i] = values[i].Target();
    return array;
}

std::int64_t ArrayData::Upper(std::int64_t dimension) const {
    if (dimension < 1 || dimension > static_cast<std::int64_t>(sizes_.size()))
        Raise(ErrorNumber::SubscriptOutOfRange);
    return sizes_[static_cast<std::size_t>(dimension - 1)] - 1;
}

std::size_t ArrayData::Place(std::span<const std::int64_t> indices) const {
    if (indices.size() != sizes_.size() || indices.empty()) Raise(ErrorNumber::SubscriptOutOfRange);
    std::size_t place = 0;
    for (std::size_t d = indices.size(); d-- > 0;) {
        if (indices[d] < 0 || indices[d] >= sizes_[d]) Raise(ErrorNumber::SubscriptOutOfRange);
        place = place * static_cast<std::size_t>(sizes_[d]) + static_cast<std::size_t>(indices[d]);
    }
    return place;
}

void ArrayData::Resize(std::span<const std::int64_t> upper) {
    if (!sizes_.empty()) {
        if (upper.size() != sizes_.size()) Raise(ErrorNumber::SubscriptOutOfRange);
        for (std::size_t d = 0; d + 1 < upper.size(); ++d)
            if (upper[d] + 1 != sizes_[d]) Raise(ErrorNumber::SubscriptOutOfRange);
    }
    SetBounds(upper);
}

void ArrayData::Blank() {
    for (auto& element : elements_)
        element.Clear();
}

} // namespace zentrel::vbscript
