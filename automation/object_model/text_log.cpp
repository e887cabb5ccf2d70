#include "automation/object_model/text_log.h"

#include "automation/object_model/bind.h"
#include "device/errors.h"

namespace zentrel::objects {

namespace {

using Texts = std::vector<std::string>;

std::string& At(Texts& texts, int position) {
    if (position < 1 || position > static_cast<int>(texts.size())) {
        throw NotFound("logged_errors", std::to_string(position));
    }
    return texts[static_cast<std::size_t>(position - 1)];
}

void Remove(Texts& texts, int position) {
    At(texts, position);
    texts.erase(texts.begin() + (position - 1));
}

int CountOf(const Texts& texts) {
    return static_cast<int>(texts.size());
}

const ClassTable& Table() {
    static const ClassTable table = [] {
        Walk walk;
        walk.count = [](const ObjectRef& object) { return CountOf(object.As<Texts>()); };
        walk.item = [](const ObjectRef& object, int position) -> Value {
            return At(object.As<Texts>(), position);
        };
        walk.key = [](const ObjectRef&, int) { return std::string(); };
        return ClassTable(
            "Collection",
            {
                Routine<[](Texts& texts, int position) { return At(texts, position); }>("Item",
                                                                                        {"Index"}),
                ReadOnly<&CountOf>("Count"),
                Routine<[](Texts& texts, std::string_view text) { texts.emplace_back(text); }>(
                    "Add", {"Item"}),
                Routine<&Remove>("Remove", {"Index"}),
            },
            {.defaultMember = "Item", .walk = walk});
    }();
    return table;
}

} // namespace

ObjectRef RefToTexts(Texts& texts) {
    return ObjectRef::Unowned(Table(), texts);
}

Texts TextsOf(const Value& value) {
    const auto* object = value.If<ObjectRef>();
    if (object == nullptr) return ToTexts(value);
    if (!*object || !object->table().traits().walk) throw WrongType(Type::Texts, KindName(value));
    const Walk& walk = *object->table().traits().walk;
    Texts texts;
    for (int position = 1; position <= walk.count(*object); ++position)
        texts.push_back(ToText(walk.item(*object, position)));
    return texts;
}

} // namespace zentrel::objects
