#pragma once

#include <cstdint>

/// Numbers of the events that the object model fires.
namespace zn::zentrel {

/// "ApplicationEvents". A document that opens is announced before the call that opens it returns, so that a listener
/// has connected to the document's own events before anything can be saved.
namespace applicationEvent {
inline constexpr std::int32_t ActiveDocumentChanged = 7;
inline constexpr std::int32_t DocumentImported = 12; ///< a document made from a foreign file
inline constexpr std::int32_t DocumentOpened = 22;
} // namespace applicationEvent

/// Fired before a document's end, in all three kinds.
inline constexpr std::int32_t documentDestroyed = 2;
/// Fired before each file that a save writes, with its path, in all three kinds.
inline constexpr std::int32_t documentSaving = 7;

/// Fired besides for drawing exchange files (.dxf, .dwg), which listeners to the event above have always passed over.
inline constexpr std::int32_t partSavingExchange = 26;
inline constexpr std::int32_t assemblySavingExchange = 31;
inline constexpr std::int32_t drawingSavingExchange = 23;

/// "ModelViewEvents": the view has been printed, told once the printer has the whole job.
inline constexpr std::int32_t viewPrinted = 10;

} // namespace zn::zentrel
