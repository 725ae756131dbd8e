#include "plugin.h"

#include "entry.h"

namespace zk {

ZkOglPlugin::ZkOglPlugin(QObject* parent) : QObject(parent) {
    for (const EntryText& text : EntryTexts())
        entries_.append(new Entry(text, this));
}

}  // namespace zk
