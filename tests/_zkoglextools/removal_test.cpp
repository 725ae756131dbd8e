#include <zk/_zkoglextools.h>

#include <QCoreApplication>
#include <QPointer>
#include <QWidget>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <numeric>

using namespace zk;

namespace {

/// All that animates, referring to each other, on a form or each on its own. Time is driven.
class Troupe {
  public:
    explicit Troupe(bool onForm) {
        TTimer::DriveTime(true);
        form.resize(200, 200);
        form.show();
        QObject* owner = onForm ? &form : nullptr;
        auto* canvas = new TZkOglCanvas(owner);
        auto* first = new TZkOglSequencer(owner);
        auto* second = new TZkOglSequencer(owner);
        auto* timer = new TZkOglTimer(owner);
        auto* moved = new TZkOglTimer(owner);
        auto* way = new TZKOglWay(owner);
        auto* navigator = new TZKOglNav(&form);
        members = {canvas, first, second, timer, moved, way, navigator};
        navigator->SetZkOglCanvas(canvas);
        for (TZkOglSequencer* sequencer : {first, second})
            sequencer->SetInterval(10);
        timer->SetSequencer(first);
        moved->SetSequencer(first);
        moved->SetSequencer(second);
        for (TZkOglTimer* each : {timer, moved}) {
            each->SetIntervals(1);
            each->SetEnabled(true);
        }
        way->SetData({"0/0/0", "1/0/0", "1/1/0", "0/0/0"});
        way->SetTimerDelay(10);
        way->SetHowLong(100);
        way->SetActive(true);
    }
    ~Troupe() {
        for (const QPointer<QObject>& member : members)
            delete member.data();
        TTimer::DriveTime(false);
    }

    template <class T>
    T* As(int index) const {
        return static_cast<T*>(members[std::size_t(index)].data());
    }
    /// Makes each of the events happen that can.
    void Play() {
        TTimer::AdvanceTime(30);
        if (auto* navigator = As<TZKOglNav>(6)) {
            navigator->MouseDown(Qt::LeftButton, ssLeft, 1, 2);
            navigator->MouseMove(ssLeft, 11, 22);
        }
        if (auto* navigator = As<TZKOglNav>(6))
            navigator->ClickAufriss();
    }

    QWidget form;
    std::array<QPointer<QObject>, 7> members;
};

}  // namespace

TEST(Removal, InAnyOrder) {
    std::array<int, 7> order{};
    std::iota(order.begin(), order.end(), 0);
    do {
        for (const bool onForm : {true, false}) {
            const Troupe troupe(onForm);
            for (const int index : order) {
                delete troupe.members[std::size_t(index)].data();
                if (order[0] == 0 || order[0] == 6)
                    const_cast<Troupe&>(troupe).Play();
            }
        }
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST(Removal, FromWithinEachEvent) {
    for (int event = 0; event < 6; ++event) {
        for (int victim = 0; victim < 7; ++victim) {
            for (const bool onForm : {true, false}) {
                Troupe troupe(onForm);
                int happened = 0;
                const std::function<void()> remove = [&] {
                    ++happened;
                    delete troupe.members[std::size_t(victim)].data();
                };
                if (event < 2)
                    QObject::connect(troupe.As<TZkOglSequencer>(1 + event), &TTimer::OnTimer, remove);
                else if (event < 4)
                    QObject::connect(troupe.As<TZkOglTimer>(1 + event), &TZkOglTimer::Ontimer, remove);
                else if (event == 4)
                    QObject::connect(troupe.As<TZKOglWay>(5), &TZKOglWay::OnTimer, remove);
                else
                    QObject::connect(troupe.As<TZKOglNav>(6), &TZKOglNav::OnNav3D, remove);
                QCoreApplication::processEvents();
                troupe.Play();
                EXPECT_GT(happened, 0) << "event " << event << ", victim " << victim;
                EXPECT_EQ(troupe.members[std::size_t(victim)].data(), nullptr);
                troupe.Play();
            }
        }
    }
}

TEST(Removal, WithTheForm) {
    for (int round = 0; round < 3; ++round) {
        auto form = std::make_unique<QWidget>();
        auto* canvas = new TZkOglCanvas(form.get());
        auto* sequencer = new TZkOglSequencer(form.get());
        auto* timer = new TZkOglTimer(form.get());
        timer->SetSequencer(sequencer);
        timer->SetEnabled(true);
        auto* navigator = new TZKOglNav(form.get());
        navigator->SetZkOglCanvas(canvas);
        form->show();
        if (round == 1)
            QObject::connect(navigator, &TZKOglNav::OnNav3D, [&] { form.reset(); });
        navigator->MouseDown(Qt::LeftButton, ssLeft, 1, 2);
        navigator->MouseMove(ssLeft, 11, 22);
    }
}
