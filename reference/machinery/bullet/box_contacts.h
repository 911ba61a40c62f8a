// Contacts of boxes with boxes.
#pragma once

class btCollisionDispatcher;

namespace hyx {

/// Finds boxes that touch or nearly do; bullet's own way sees overlap only, so that what stands exactly on another
/// would first fall.
void registerBoxContacts(btCollisionDispatcher& dispatcher);

} // namespace hyx
