// Contacts of what is made of parts.
#pragma once

class btCollisionDispatcher;

namespace hyx {

/// Finds contacts of compounds part by part. Unlike bullet's own way it looks ahead of fast ones, and what it finds
/// does not depend on what was near before, so that a restored state goes on as the saved one did.
void registerPartContacts(btCollisionDispatcher& dispatcher);

} // namespace hyx
