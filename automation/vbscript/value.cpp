#include "automation/vbscript/value.h"

#include "automation/vbscript/arrays.h"
#include "automation/vbscript/errors.h"
#include "automation/vbscript/text.h"

#include <algorithm>
#include <new>
#include <vector>

namespace zentrel::vbscript {
namespace {

/// Objects whose last reference went while others were ending.
struct Graveyard {
    int depth = 0;
    std::vector<Counted*> waiting;
};
thread_local Graveyard graveyard;
constexpr int kMaxNestedEnds = 24;

thread_local std::size_t bytes_held = 0;
thread_local std::size_t bytes_allowed = std::size_t{1} << 30;

} // namespace

namespace memory {

void Charge(std::size_t bytes) {
    if (bytes > bytes_allowed - std::min(bytes_held, bytes_allowed))
        Raise(ErrorNumber::OutOfMemory);
    bytes_held += bytes;
}

void Discharge(std::size_t bytes) {
    bytes_held -= bytes;
}

void SetLimit(std::size_t bytes) {
    bytes_allowed = bytes;
}

} // namespace memory

void Counted::End(Counted* object) {
    object->references_ = 1;
    object->BeforeEnd();
    if (--object->references_ == 0) delete object;
}

void Counted::Bury(Counted* object) {
    if (graveyard.depth >= kMaxNestedEnds) {
        graveyard.waiting.push_back(object);
        return;
    }
    ++graveyard.depth;
    End(object);
    --graveyard.depth;
    while (graveyard.depth == 0 && !graveyard.waiting.empty()) {
        auto* next = graveyard.waiting.back();
        graveyard.waiting.pop_back();
        ++graveyard.depth;
        End(next);
        --graveyard.depth;
    }
}

StringData* StringData::New(std::size_t length, std::size_t capacity) {
    if (capacity > kMaxStringLength) {
        if (length > kMaxStringLength) Raise(ErrorNumber::OutOfMemory);
        capacity = kMaxStringLength;
    }
    const auto bytes = sizeof(StringData) + capacity * sizeof(char16_t);
    memory::Charge(bytes);
    auto* data = new (::operator new(bytes)) StringData;
    data->length_ = static_cast<std::uint32_t>(length);
    data->capacity_ = static_cast<std::uint32_t>(capacity);
    return data;
}

void StringData::Delete(StringData* data) {
    memory::Discharge(sizeof(StringData) + data->capacity_ * sizeof(char16_t));
    ::operator delete(data);
}

void Value::RetainContent() const noexcept {
    switch (type_) {
    case Type::String:
        if (string_) string_->Retain();
        break;
    case Type::Object:
        if (object_) object_->Retain();
        break;
    case Type::Array:
        array_->Retain();
        break;
    default:
        element_->Retain();
    }
}

void Value::ReleaseContent() noexcept {
    const auto type = type_;
    type_ = Type::Empty;
    switch (type) {
    case Type::String:
        if (string_) string_->Release();
        break;
    case Type::Object:
        if (object_) object_->Release();
        break;
    case Type::Array:
        array_->Release();
        break;
    default:
        element_->Release();
    }
}

Value Value::String(std::u16string_view text) {
    Value value(Type::String, 0);
    value.string_ = nullptr;
    if (!text.empty()) {
        value.string_ = StringData::New(text.size(), text.size());
        std::copy(text.begin(), text.end(), value.string_->Chars());
    }
    return value;
}

Value Value::Utf8(std::string_view text) {
    return String(Utf8ToUtf16(text));
}

Value Value::Adopt(StringData* data) {
    Value value(Type::String, 0);
    value.string_ = data;
    return value;
}

Value Value::FromObject(vbscript::Object* object) {
    Value value(Type::Object, 0);
    value.object_ = object;
    if (object) object->Retain();
    return value;
}

Value Value::FromArray(ArrayData* array) {
    Value value(Type::Array, 0);
    value.array_ = array;
    array->Retain();
    return value;
}

Value Value::Ref(Value* variable) {
    Value value(Type::Ref, 0);
    value.variable_ = variable;
    return value;
}

Value Value::FromElement(ElementReference* element) {
    Value value(Type::ElementRef, 0);
    value.element_ = element;
    element->Retain();
    return value;
}

Value Value::FromProcedure(const vbscript::Procedure* procedure) {
    Value value(Type::Procedure, 0);
    value.procedure_ = procedure;
    return value;
}

const Value& Value::Follow() const {
    const Value* value = type_ == Type::Ref ? variable_ : &element_->Element();
    while (value->type_ == Type::Ref || value->type_ == Type::ElementRef)
        value = value->type_ == Type::Ref ? value->variable_ : &value->element_->Element();
    return *value;
}

ArrayData* Value::WritableArray() {
    if (array_->References() > 1 && !array_->Locked()) {
        auto copy = ArrayData::Copy(*array_);
        copy->Retain();
        array_->Release();
        array_ = copy.get();
    }
    return array_;
}

std::string Value::ToUtf8() const {
    return Utf16ToUtf8(AsText());
}

void Value::Append(std::u16string_view text) {
    if (text.empty()) return;
    const auto length = AsText().size();
    const auto total = length + text.size();
    if (string_ && string_->Unique() && total <= string_->Capacity()) {
        std::copy(text.begin(), text.end(), string_->Chars() + length);
        string_->SetLength(total);
        return;
    }
    // Room for as much again: a string that grows piece by piece is copied seldom.
    auto* grown =
        StringData::New(total, length == 0 ? total : std::max(total * 2, std::size_t{16}));
    const auto old = AsText();
    std::copy(old.begin(), old.end(), grown->Chars());
    std::copy(text.begin(), text.end(), grown->Chars() + length);
    if (string_) string_->Release();
    string_ = grown;
}

} // namespace zentrel::vbscript
