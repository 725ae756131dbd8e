#pragma once

#include <zk/_zkcomtypes/graphicsobject.h>

#include <QMetaProperty>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

/// Counts the change events of one object, and checks that each comes from it.
class Changes {
  public:
    explicit Changes(zk::TZkgraphicsobject& object) {
        connection_ = QObject::connect(&object, &zk::TZkgraphicsobject::OnChange, [this, &object](QObject* sender) {
            EXPECT_EQ(&object, sender);
            ++count_;
        });
    }
    ~Changes() { QObject::disconnect(connection_); }
    Changes(const Changes&) = delete;
    Changes& operator=(const Changes&) = delete;

    /// The number since the last call.
    int take() { return std::exchange(count_, 0); }

  private:
    QMetaObject::Connection connection_;
    int count_ = 0;
};

using Published = std::vector<std::pair<std::string, std::string>>;

/// The properties of a class itself, name and type, in their order.
inline Published published(const QMetaObject& meta) {
    Published found;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        found.emplace_back(meta.property(i).name(), meta.property(i).typeName());
    return found;
}
