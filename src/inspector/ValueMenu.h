#pragma once

#include <QList>

class QMenu;
class QString;

namespace model {
class Attribute;
}

namespace inspector {

class InspectorContext;

/// What can be done with the value of one attribute of several components: copying it, pasting
/// another, going back to the one of the composition file.
void fillValueMenu(QMenu& menu, InspectorContext& context,
                   const QList<model::Attribute*>& attributes, const QString& name);

}  // namespace inspector
