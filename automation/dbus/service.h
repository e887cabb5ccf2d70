#pragma once

#include <deque>
#include <functional>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QTimer>

#include "automation/application/application.h"
#include "automation/application/call_door.h"
#include "automation/application/clients.h"
#include "automation/dbus/object_news.h"
#include "automation/dbus/reception.h"
#include "automation/dbus/service_objects.h"
#include "automation/dbus/wire_feed.h"

namespace zentrel::dbus {

/// Answers the calls of other programs. Each goes through the door in its turn and is answered when
/// it has been served, however long that takes; no failure of any kind leaves it but as an answer.
class Service : public QDBusVirtualObject {
  public:
    Service(FrmPart& frm, WindowFrame& frame);

    bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override;
    QString introspect(const QString& path) const override;

    /// A caller's connection has gone.
    void CallerLeft(const QString& caller);
    /// The bus itself has gone, and all callers with it.
    void BusLeft();
    /// Runs when a caller begins to hold something: whoever hears it tells of its leaving.
    std::function<void(const QString& caller)> CallerHolds;
    /// Where signals go out.
    std::function<void(const QDBusMessage& signal)> Send;

    /// To be called behind the program's events: tells callers of objects that came and went.
    void Follow() { news_.Tell(); }
    WireFeed& wire() { return wire_; }

  private:
    struct Waiting {
        QDBusMessage call;
        QDBusConnection bus;
    };
    using Answer = QVariantList (Service::*)(const QDBusMessage&);
    struct Standard {
        const char* interface;
        const char* member;
        const char* signature;
        Answer answer;
    };
    static const Standard kStandard[];

    bool SliceIsOver();
    void ServeWaiting();
    void Admit(const Waiting& waiting);
    Turn TurnFor(const QDBusMessage& call) const;
    /// Whether something at its path has the member.
    bool Reaches(const QDBusMessage& call) const;
    QVariantList AnswerTo(const QDBusMessage& call);
    QVariantList CallObject(const QDBusMessage& call);
    const objects::ObjectRef& Facet(const std::vector<objects::ObjectRef>& facets,
                                    const QString& interface) const;

    void ConnectSignals();
    void EmitNews(const char* name, const std::string& path, const QVariant& content) const;
    void Emit(QDBusMessage signal, const QVariantList& arguments) const;

    QVariantList Introspect(const QDBusMessage& call);
    QVariantList Get(const QDBusMessage& call);
    QVariantList Set(const QDBusMessage& call);
    QVariantList GetAll(const QDBusMessage& call);
    QVariantList GetManagedObjects(const QDBusMessage& call);

    FrmPart& frm_;
    Clients clients_{frm_};
    CallDoor door_{frm_};
    Application application_;
    Reception reception_;
    WireFeed wire_{reception_};
    ServiceObjects objects_;
    ObjectNews news_;

    // Many calls in a row leave the window room to live: past a slice of time they wait for the
    // next turn of the event loop.
    std::deque<Waiting> waiting_;
    QElapsedTimer slice_;
    QTimer nextTurn_;
};

} // namespace zentrel::dbus
