#pragma once

#include "ConsoleAccess.h"
#include "GuardedRoutes.h"
#include "PageAssets.h"

namespace merovanta::devservice {

/// The console's front door: its address, with the token in it or without, and what the page to sign in on
/// needs.
class SignInApi {
 public:
    SignInApi(ConsoleAccess& access, const PageAssets& assets) : access_(access), assets_(assets) {}

    /// The routes must be open to those who have not signed in.
    void addRoutes(GuardedRoutes& routes);

    /// What somebody sees who has to sign in first.
    static Response page(const Request& request, const PageAssets& assets, unsigned status = 401);

 private:
    Response enter(const Request& request);
    Response signIn(const Request& request);

    ConsoleAccess& access_;
    const PageAssets& assets_;
};

}  // namespace merovanta::devservice
