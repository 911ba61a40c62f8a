// The page of the remote control.
#pragma once

namespace hyxOSG {

/// One file of HTML with its script; takes the token from its own address.
extern char const remotePage[];

} // namespace hyxOSG
