#pragma once

#include <QPointF>
#include <memory>
#include <vector>

#include "foundation/PropertyValue.h"
#include "quartz/NodeKeys.h"
#include "quartz/UserInfo.h"

namespace quartz {

class QuartzComposition;

/// One patch of a composition file with its child patches: an editable tree of property-list values
/// that knows how nodes are keyed, wired, given values and published, and nothing of what patches
/// do. A patch owns its nodes.
class QuartzPatch {
 public:
  /// A macro patch ("QCPatch") with an empty state.
  QuartzPatch();
  explicit QuartzPatch(foundation::PropertyDictionary dictionary);
  /// A root patch; the composition owns it. An empty dictionary gives a macro patch.
  QuartzPatch(QuartzComposition* composition, foundation::PropertyDictionary dictionary);
  QuartzPatch(const QuartzPatch&) = delete;
  QuartzPatch& operator=(const QuartzPatch&) = delete;

  /// A deep copy without parent and composition.
  [[nodiscard]] std::unique_ptr<QuartzPatch> copy() const;

  [[nodiscard]] const std::vector<std::unique_ptr<QuartzPatch>>& nodes() const { return m_nodes; }
  /// The patch dictionary; its state does not hold "nodes".
  [[nodiscard]] const foundation::PropertyDictionary& data() const { return m_data; }
  [[nodiscard]] const foundation::PropertyDictionary& state() const;
  /// The state for editing; connections are added with addConnectionFromComponent() only.
  [[nodiscard]] foundation::PropertyDictionary& editState();
  [[nodiscard]] QuartzPatch* parentPatch() const { return m_parentPatch; }
  /// Only the back-reference; addNode() and takeNode() move patches.
  void setParentPatch(QuartzPatch* parent) { m_parentPatch = parent; }

  [[nodiscard]] QString patchClass() const;
  /// A name that begins with "BRV" is a plug-in: it becomes the identifier of a "QCPlugInPatch".
  void setPatchClass(const QString& name);
  [[nodiscard]] QString key() const;
  void setKey(const QString& key);
  [[nodiscard]] QString identifier() const;
  void setIdentifier(const QString& identifier);
  /// The decoded "userInfo"; empty when there is none or it cannot be read.
  [[nodiscard]] UserInfo userInfo() const;
  void setUserInfo(const UserInfo& userInfo);
  /// The name of the user info, or the key where it has none.
  [[nodiscard]] QString name() const;
  void setName(const QString& name);
  /// Place of the node in the editor; (0, 0) when not stored.
  [[nodiscard]] QPointF position() const;
  void setPosition(const QPointF& position);
  [[nodiscard]] bool timebased() const;
  [[nodiscard]] foundation::PropertyValue timebase() const;
  /// A null value takes the time base away.
  void setTimebase(const foundation::PropertyValue& timebase);
  [[nodiscard]] bool isRootPatch() const { return m_composition && !m_parentPatch; }
  /// Its own composition, else its parent's.
  [[nodiscard]] QuartzComposition* composition() const;

  QuartzPatch* addNode(std::unique_ptr<QuartzPatch> patch);
  /// Takes a direct child out, with the ownership; connections to it stay.
  [[nodiscard]] std::unique_ptr<QuartzPatch> takeNode(const QuartzPatch* node);
  /// The wanted key, or with the first number from 2 behind it that makes it unique among the
  /// nodes.
  [[nodiscard]] QString uniqueNodeKey(const QString& wanted);
  /// Makes, keys ("CLASS_n", the first free n) and appends a node.
  QuartzPatch* addPatchWithClass(const QString& className,
                                 const foundation::PropertyDictionary& state = {},
                                 const foundation::PropertyDictionary& inputPortState = {});
  /// Moves the contents of the other patch into this one and publishes its inputs here and outside.
  void addNodesOfPatch(QuartzPatch& other);
  void addConnectionFromComponent(const QString& source, const QString& fromPort,
                                  const QString& toComponent, const QString& toPort);
  /// Publishes a port of this node in its parent (nothing happens without one); without a label the
  /// entry has no state.
  void publishPort(const QString& port, const QString& withName,
                   const std::optional<QString>& label = {});
  /// The same for an output; its label is always the published name.
  void publishOutputPort(const QString& port, const QString& withName);
  /// The first published input entry of that key; empty when there is none.
  [[nodiscard]] foundation::PropertyDictionary infoForPublishedInputPortWithName(
      const QString& key) const;
  /// A published input gets the value in its entry, which moves to the end of the list; any other
  /// key is a port of this patch.
  void setPortValue(const foundation::PropertyValue& value, const QString& key);
  /// False, and nothing changes, when the state has no dictionary of that name.
  bool setPortValue(const foundation::PropertyValue& value, const QString& key,
                    const QString& inState);
  /// Reads the entry itself and not its state, unlike what setPortValue() writes.
  [[nodiscard]] foundation::PropertyValue portValueForKey(const QString& key) const;
  /// The first direct child of that name.
  [[nodiscard]] QuartzPatch* patchWithName(const QString& name) const;
  [[nodiscard]] foundation::PropertyDictionary patchDataForFileData() const;

  /// The label stored in a published port's entry; null when there is none.
  [[nodiscard]] static QString labelOfPublishedPort(const foundation::PropertyDictionary& entry);

 private:
  QuartzComposition* m_composition = nullptr;
  QuartzPatch* m_parentPatch = nullptr;
  foundation::PropertyDictionary m_data;
  std::vector<std::unique_ptr<QuartzPatch>> m_nodes;
  NodeKeys m_nodeKeys;
  std::optional<int> m_highestConnection;  ///< known once a connection was added
};

}  // namespace quartz
