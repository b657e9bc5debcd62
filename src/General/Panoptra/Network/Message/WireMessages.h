#pragma once

#include <panoptra.pb.h>

namespace merovanta {

// The names under which the service's documentation lists the generated types.
using Com_Merovanta_Panoptra_ProtoMessage = com::merovanta::panoptra::ProtoMessage;
using Com_Merovanta_Panoptra_ProtoMessageList = com::merovanta::panoptra::ProtoMessageList;
using Com_Merovanta_Panoptra_ProtoClickEvent = com::merovanta::panoptra::ProtoClickEvent;
using Com_Merovanta_Panoptra_ProtoScreenshotEvent = com::merovanta::panoptra::ProtoScreenshotEvent;
using Com_Merovanta_Panoptra_UserTag = com::merovanta::panoptra::UserTag;

using com::merovanta::panoptra::ProtoClickEvent;
using com::merovanta::panoptra::ProtoMessage;
using com::merovanta::panoptra::ProtoMessageList;
using com::merovanta::panoptra::ProtoScreenshotEvent;
using com::merovanta::panoptra::UserTag;

}  // namespace merovanta
