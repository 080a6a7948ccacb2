#pragma once

namespace plx {

struct ModelState;

/// Walks the flow-transport link file that stands at the flow unit: record positions, present terms, steps
/// without times. It fills FlowResults as scan_flows does.
void scan_link_flows(ModelState& model);
/// Loads the face flows and boundary terms of the current step from the link file.
void load_link_flows(ModelState& model);

}  // namespace plx
