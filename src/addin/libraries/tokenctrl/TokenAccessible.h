#pragma once

namespace tokenctrl {

/// Lets screen readers and test tools see a token edit's plain text, with tokens as their patterns; by itself Qt would
/// show each token as a place holder without a word. May be called often.
void installTokenAccessibility();

} // namespace tokenctrl
