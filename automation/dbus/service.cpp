#include "automation/dbus/service.h"

#include <algorithm>

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>

#include "automation/dbus/failure.h"
#include "automation/dbus/introspection.h"
#include "automation/dbus/member_calls.h"
#include "screens/qt/model_text.h"

using InterfaceValues = QMap<QString, QVariantMap>;
using ManagedObjects = QMap<QDBusObjectPath, InterfaceValues>;
Q_DECLARE_METATYPE(InterfaceValues)
Q_DECLARE_METATYPE(ManagedObjects)

namespace zentrel::dbus {
namespace {

constexpr qint64 kSlice = 8; // milliseconds
constexpr const char* kManager = "org.freedesktop.DBus.ObjectManager";
constexpr const char* kProperties = "org.freedesktop.DBus.Properties";

QString Latin(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

[[noreturn]] void NoObject(const QDBusMessage& call) {
    throw BadCall("UnknownObject", "There is no object at " + call.path().toStdString());
}

bool IsMeant(const QDBusMessage& call, const objects::ObjectRef& facet) {
    return call.interface().isEmpty() || call.interface() == InterfaceOf(facet.table());
}

} // namespace

const Service::Standard Service::kStandard[] = {
    {"org.freedesktop.DBus.Introspectable", "Introspect", "", &Service::Introspect},
    {kProperties, "Get", "ss", &Service::Get},
    {kProperties, "Set", "ssv", &Service::Set},
    {kProperties, "GetAll", "s", &Service::GetAll},
    {kManager, "GetManagedObjects", "", &Service::GetManagedObjects},
};

Service::Service(FrmPart& frm, WindowFrame& frame)
    : frm_(frm), application_(frm, frame), reception_(clients_, frame),
      objects_(frm, application_, reception_, wire_), news_(frm.part, objects_) {
    qDBusRegisterMetaType<InterfaceValues>();
    qDBusRegisterMetaType<ManagedObjects>();
    nextTurn_.setSingleShot(true);
    nextTurn_.setInterval(0);
    nextTurn_.callOnTimeout([this] { ServeWaiting(); });
    ConnectSignals();
}

void Service::Emit(QDBusMessage signal, const QVariantList& arguments) const {
    signal.setArguments(arguments);
    if (Send) Send(signal);
}

// From each manager that lists the object.
void Service::EmitNews(const char* name, const std::string& path, const QVariant& content) const {
    for (const std::string_view manager : {kFrontDoor, kPart}) {
        if (path == manager || !path.starts_with(manager)) continue;
        Emit(QDBusMessage::createSignal(Latin(manager), QLatin1String(kManager),
                                        QLatin1String(name)),
             {QVariant::fromValue(QDBusObjectPath(QString::fromStdString(path))), content});
    }
}

void Service::ConnectSignals() {
    news_.Came = [this](const std::string& path, const objects::ObjectRef& object) {
        const InterfaceValues values{{InterfaceOf(object.table()), ReadAll(object, objects_)}};
        EmitNews("InterfacesAdded", path, QVariant::fromValue(values));
    };
    news_.Went = [this](const std::string& path, const objects::ClassTable& table) {
        EmitNews("InterfacesRemoved", path, QStringList{InterfaceOf(table)});
    };
    wire_.Send = [this](const std::string& follower, const QStringList& lines, int leftOut) {
        Emit(QDBusMessage::createTargetedSignal(QString::fromStdString(follower), Latin(kWire),
                                                QStringLiteral("org.zentrel.Wire"),
                                                QStringLiteral("Words")),
             {lines, leftOut});
    };
}

bool Service::handleMessage(const QDBusMessage& call, const QDBusConnection& bus) {
    const Waiting waiting{call, bus};
    if (!waiting_.empty() || SliceIsOver()) {
        waiting_.push_back(waiting);
    } else {
        Admit(waiting);
    }
    return true;
}

bool Service::SliceIsOver() {
    if (nextTurn_.isActive()) return slice_.elapsed() >= kSlice;
    slice_.start();
    nextTurn_.start();
    return false;
}

void Service::ServeWaiting() {
    while (!waiting_.empty() && !SliceIsOver()) {
        const Waiting next = std::move(waiting_.front());
        waiting_.pop_front();
        Admit(next);
    }
}

void Service::Admit(const Waiting& waiting) {
    const auto answer = std::make_shared<QVariantList>();
    door_.Admit(
        TurnFor(waiting.call),
        [this, waiting, answer] {
            // Its caller went with its bus: what it would hold from here on nobody could release.
            if (waiting.bus.isConnected()) *answer = AnswerTo(waiting.call);
        },
        [waiting, answer](const std::exception_ptr& failure) {
            if (!waiting.call.isReplyRequired() || !waiting.bus.isConnected()) return;
            if (!failure) {
                waiting.bus.send(waiting.call.createReply(*answer));
                return;
            }
            const Failure words = FailureOf(failure);
            waiting.bus.send(waiting.call.createErrorReply(words.name, words.text));
        });
}

Turn Service::TurnFor(const QDBusMessage& call) const {
    const std::string member = call.member().toStdString();
    for (const Standard& standard : kStandard) {
        if (call.member() != QLatin1String(standard.member)) continue;
        return standard.answer == &Service::Set ? Turn::Idle : Turn::Pause;
    }
    const Turn turn = TurnOf(member);
    if (turn != Turn::StopFirst) return turn;
    // What can't be served stops nothing, nor does the name of the device that is loaded already.
    if (call.signature() != QLatin1String("s") || !Reaches(call)) return Turn::Idle;
    const bool loaded = view::ToModel(call.arguments()[0].toString()) == frm_.part.ID;
    return loaded ? Turn::Pause : turn;
}

bool Service::Reaches(const QDBusMessage& call) const {
    const auto facets = objects_.At(call.path().toStdString());
    return std::any_of(facets.begin(), facets.end(), [&](const objects::ObjectRef& facet) {
        return IsMeant(call, facet) && MemberOf(facet, call.member()) != nullptr;
    });
}

QVariantList Service::AnswerTo(const QDBusMessage& call) {
    reception_.caller = call.service().toStdString();
    for (const Standard& standard : kStandard) {
        const bool named = call.member() == QLatin1String(standard.member);
        const bool meant =
            call.interface() == QLatin1String(standard.interface) || call.interface().isEmpty();
        if (!named || !meant) continue;
        if (call.signature() != QLatin1String(standard.signature)) {
            throw BadCall("InvalidArgs",
                          std::string(standard.member) + " takes \"" + standard.signature + "\"");
        }
        return (this->*standard.answer)(call);
    }
    return CallObject(call);
}

QVariantList Service::CallObject(const QDBusMessage& call) {
    const auto facets = objects_.At(call.path().toStdString());
    if (facets.empty()) NoObject(call);
    for (const auto& facet : facets) {
        if (!IsMeant(call, facet)) continue;
        const Member* member = MemberOf(facet, call.member());
        if (member == nullptr) continue;
        QVariantList answer = CallMember(facet, *member, call.arguments(), objects_);
        const std::string& caller = reception_.caller;
        if (clients_.Holds(caller) || wire_.Holds(caller)) {
            if (CallerHolds) CallerHolds(call.service());
        }
        return answer;
    }
    throw BadCall("UnknownMethod", "There is no method " + call.member().toStdString() + " at " +
                                       call.path().toStdString());
}

const objects::ObjectRef& Service::Facet(const std::vector<objects::ObjectRef>& facets,
                                         const QString& interface) const {
    for (const auto& facet : facets) {
        if (interface.isEmpty() || interface == InterfaceOf(facet.table())) return facet;
    }
    throw BadCall("UnknownInterface", "There is no interface " + interface.toStdString());
}

QString Service::introspect(const QString& path) const {
    const auto facets = objects_.At(path.toStdString());
    QString xml;
    bool properties = false;
    for (const auto& facet : facets) {
        const bool wire = &facet.table() == objects::ClassOf<WireFeed>();
        xml += InterfaceXml(facet.table(), wire ? WireSignalXml() : QString());
        for (const Member& member : facet.table().members())
            properties = properties || IsBusProperty(member);
    }
    if (ServiceObjects::IsManager(path.toStdString())) xml += ManagerXml();
    return xml + StandardXml(properties);
}

QVariantList Service::Introspect(const QDBusMessage& call) {
    const std::string path = call.path().toStdString();
    if (objects_.At(path).empty()) NoObject(call);
    return {NodeXml(introspect(call.path()), objects_.Children(path))};
}

QVariantList Service::Get(const QDBusMessage& call) {
    const auto facets = objects_.At(call.path().toStdString());
    if (facets.empty()) NoObject(call);
    const auto& facet = Facet(facets, call.arguments()[0].toString());
    return {ReadProperty(facet, call.arguments()[1].toString(), objects_)};
}

QVariantList Service::Set(const QDBusMessage& call) {
    const auto facets = objects_.At(call.path().toStdString());
    if (facets.empty()) NoObject(call);
    const auto& facet = Facet(facets, call.arguments()[0].toString());
    WriteProperty(facet, call.arguments()[1].toString(), call.arguments()[2], objects_);
    return {};
}

QVariantList Service::GetAll(const QDBusMessage& call) {
    const auto facets = objects_.At(call.path().toStdString());
    if (facets.empty()) NoObject(call);
    return {ReadAll(Facet(facets, call.arguments()[0].toString()), objects_)};
}

QVariantList Service::GetManagedObjects(const QDBusMessage& call) {
    const std::string path = call.path().toStdString();
    if (!ServiceObjects::IsManager(path)) {
        throw BadCall("UnknownMethod", "There is no method GetManagedObjects at " + path);
    }
    news_.Begin();
    ManagedObjects found;
    objects_.Walk(path, [&](const std::string& at, const objects::ObjectRef& object) {
        found[QDBusObjectPath(QString::fromStdString(at))].insert(InterfaceOf(object.table()),
                                                                  ReadAll(object, objects_));
    });
    return {QVariant::fromValue(found)};
}

void Service::CallerLeft(const QString& caller) {
    wire_.Leave(caller.toStdString());
    clients_.Leave(caller.toStdString());
}

void Service::BusLeft() {
    waiting_.clear();
    wire_.Forget();
    clients_.Forget();
}

} // namespace zentrel::dbus
