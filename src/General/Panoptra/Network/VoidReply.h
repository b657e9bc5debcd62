#pragma once

namespace merovanta {

/// What a call returns that returns nothing: stands for any JSON object.
struct VoidReply {};

}  // namespace merovanta
