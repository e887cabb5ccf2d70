#include "automation/vbscript/objects.h"

#include "automation/vbscript/convert.h"
#include "automation/vbscript/errors.h"
#include "automation/vbscript/runtime.h"

namespace zentrel::vbscript {

void Tracked::Track(Tracked*& head) {
    head_ = &head;
    next_ = head;
    if (next_) next_->previous_ = this;
    head = this;
}

void Tracked::Untrack() {
    if (!head_) return;
    (previous_ ? previous_->next_ : *head_) = next_;
    if (next_) next_->previous_ = previous_;
    head_ = nullptr;
    next_ = previous_ = nullptr;
}

Instance::Instance(Runtime& runtime, const ClassInfo& info)
    : Object(Kind::Instance), runtime_(&runtime), info_(&info) {
    const auto bytes = sizeof(Instance) + info.fields.size() * sizeof(Value);
    memory::Charge(bytes);
    charged_ = bytes;
    fields_ = std::make_unique<Value[]>(info.fields.size());
    Track(runtime.tracked);
    for (std::size_t i = 0; i < info.fields.size(); ++i) {
        const auto& field = info.fields[i];
        if (field.is_array)
            fields_[i] =
                Value::FromArray(ArrayData::New(field.bounds, !field.bounds.empty()).get());
    }
}

Instance::~Instance() {
    memory::Discharge(charged_);
}

void Instance::Terminate() noexcept {
    if (terminated_ || !runtime_ || runtime_->closing) return;
    terminated_ = true;
    if (info_->terminate) runtime_->machine.RunTerminate(*this);
}

void Instance::LetGo() {
    Terminate();
    runtime_ = nullptr;
    const auto count = info_->fields.size();
    info_ = &Runtime::DeadClass();
    for (std::size_t i = 0; i < count; ++i)
        fields_[i].Clear();
}

ProcedureReference::ProcedureReference(Runtime& runtime, const Procedure& procedure)
    : Object(Kind::Procedure), runtime_(runtime), procedure_(&procedure) {
    Track(runtime.tracked);
}

Value ProcedureReference::Call(std::span<Value> args) {
    if (!procedure_) Raise(ErrorNumber::ObjectRequired);
    return runtime_.machine.Run(*procedure_, nullptr, args);
}

Iteration::Iteration(const Value& collection) : Object(Kind::Internal) {
    const auto& target = collection.Target();
    if (target.IsArray()) {
        array_ = target.AsArray()->Locked() ? ArrayData::Copy(*target.AsArray())
                                            : Handle<ArrayData>(target.AsArray());
        return;
    }
    if (!target.IsObject() || !target.AsObject() || target.AsObject()->kind() != Kind::Host)
        Raise(ErrorNumber::NotACollection);
    auto* host = static_cast<HostObject*>(target.AsObject());
    object_ = target.AsObject();
    try {
        enumerator_ = host->Enumerate();
    } catch (const ScriptError& error) {
        if (error.info.number != static_cast<int>(ErrorNumber::NoSuchMember)) throw;
    }
    if (!enumerator_) Raise(ErrorNumber::NotACollection);
}

bool Iteration::Next(Value& item) {
    if (array_) {
        if (at_ >= array_->Count()) return false;
        item = array_->At(at_++);
        return true;
    }
    auto next = enumerator_->Next();
    if (!next) return false;
    item = std::move(*next);
    return true;
}

std::vector<std::int64_t> Indices(std::span<const Value> args) {
    std::vector<std::int64_t> indices;
    indices.reserve(args.size());
    for (const auto& arg : args)
        indices.push_back(ToLong(arg));
    return indices;
}

namespace {

HostObject& AsHost(Object& object) {
    if (object.kind() != Object::Kind::Host) Raise(ErrorNumber::NoSuchMember);
    return static_cast<HostObject&>(object);
}

Value DefaultWithArguments(Object* object, std::span<Value> args) {
    if (!object) Raise(ErrorNumber::ObjectNotSet);
    switch (object->kind()) {
    case Object::Kind::Procedure:
        return static_cast<ProcedureReference&>(*object).Call(args);
    case Object::Kind::Instance: {
        auto& instance = static_cast<Instance&>(*object);
        const auto* member = instance.info().default_member;
        if (!member || !member->get || !instance.Alive()) Raise(ErrorNumber::NoSuchMember);
        return instance.runtime().machine.Run(*member->get, &instance, args);
    }
    default:
        break;
    }
    auto& host = AsHost(*object);
    const auto member = host.DefaultMember();
    if (!member) Raise(ErrorNumber::NoSuchMember);
    return host.Get(member->slot, Arguments(args));
}

void SetDefault(Object* object, std::span<Value> args, const Value& value, bool set) {
    if (!object) Raise(ErrorNumber::ObjectNotSet);
    if (object->kind() == Object::Kind::Instance) {
        auto& instance = static_cast<Instance&>(*object);
        const auto* member = instance.info().default_member;
        const auto* setter = member ? (set ? member->set : member->let) : nullptr;
        if (!setter || !instance.Alive()) Raise(ErrorNumber::NoSuchMember);
        std::vector<Value> all(args.begin(), args.end());
        all.push_back(value.Target());
        instance.runtime().machine.Run(*setter, &instance, all);
        return;
    }
    auto& host = AsHost(*object);
    const auto member = host.DefaultMember();
    if (!member) Raise(ErrorNumber::NoSuchMember);
    if (set)
        host.SetRef(member->slot, Arguments(args), value.Target());
    else
        host.Set(member->slot, Arguments(args), value.Target());
}

} // namespace

Value DefaultValue(Object* object) {
    constexpr int kMaxChain = 8;
    auto value = DefaultWithArguments(object, {});
    for (int i = 0; i < kMaxChain && value.Target().IsObject(); ++i)
        value = DefaultWithArguments(value.Target().AsObject(), {});
    if (value.Target().IsObject()) Raise(ErrorNumber::OutOfStack);
    return value.Target();
}

Value IndexValue(const Value& base, std::span<Value> args) {
    const auto& target = base.Target();
    if (target.IsArray()) {
        const auto place = target.AsArray()->Place(Indices(args));
        return target.AsArray()->At(place);
    }
    if (!target.IsObject()) Raise(ErrorNumber::TypeMismatch);
    const Handle<Object> keep(target.AsObject());
    return DefaultWithArguments(keep.get(), args);
}

void SetIndexValue(Value& base, std::span<Value> args, const Value& value, bool set) {
    auto& target = base.Target();
    if (target.IsArray()) {
        // What the value's default member does may change the array: it comes first.
        Value plain = set || !value.Target().IsObject() ? value.Target() : Plain(value);
        if (set && !plain.IsObject()) Raise(ErrorNumber::ObjectRequired);
        const auto indices = Indices(args);
        if (!target.IsArray()) Raise(ErrorNumber::TypeMismatch);
        auto* array = target.WritableArray();
        array->At(array->Place(indices)) = std::move(plain);
        return;
    }
    if (!target.IsObject()) Raise(ErrorNumber::TypeMismatch);
    const Handle<Object> keep(target.AsObject());
    SetDefault(keep.get(), args, value, set);
}

std::string ObjectTypeName(const Object* object) {
    if (!object) return "Nothing";
    if (object->kind() == Object::Kind::Instance)
        return static_cast<const Instance*>(object)->info().spelling;
    if (object->kind() == Object::Kind::Host)
        return std::string(static_cast<const HostObject*>(object)->ClassName());
    return "Object";
}

void HostObject::Set(int, Arguments, const Value&) {
    Raise(ErrorNumber::NoSuchMember);
}

void HostObject::SetRef(int, Arguments, const Value&) {
    Raise(ErrorNumber::NoSuchMember);
}

std::unique_ptr<Enumerator> HostObject::Enumerate() {
    Raise(ErrorNumber::NoSuchMember);
}

} // namespace zentrel::vbscript
