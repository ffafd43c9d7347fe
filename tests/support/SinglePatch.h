#pragma once

#include "support/GraphBuilder.h"

namespace support {

/// The value of one output of a single patch after one frame. Structure inputs are given as arrays
/// or dictionaries.
inline runtime::Value outputOf(const QString& className, const QString& output,
                               const GraphBuilder::Dictionary& inputs,
                               const GraphBuilder::Dictionary& state = {}) {
  GraphBuilder graph;
  const QString node = graph.node(className, state, inputs);
  graph.publishOutput(node, output, QStringLiteral("result"));
  const auto renderer = graph.renderer();
  static_cast<void>(renderer->renderAtTime(0, QSize(16, 16)));
  return renderer->valueForOutputKey(QStringLiteral("result"));
}

}  // namespace support
