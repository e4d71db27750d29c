// The measures, each of which adds its rows to the table. They throw std::exception when they
// cannot be taken, above all when the two sides turn out not to have done the same work.
#pragma once

#include "session.h"
#include "table.h"

namespace quillon::benchmarks {

// A member that CDevice hands on, called directly and by dispatch, against the host's device.
void MeasureForwarding(const Session& session, Table& table);
// Loading an application file, against the parser and one visit of the nodes; and how it grows.
void MeasureProfile(const Session& session, Table& table);
// Saving the application of a device, against the same reads and the same document.
void MeasureExport(const Session& session, Table& table);
// Writing configuration values in a download, against the same look-ups and writes.
void MeasureDownload(const Session& session, Table& table);
// Saving and loading, against a script that does the same by the host's objects and MSXML.
void MeasureScript(const Session& session, Table& table);
// What a point costs in files of 10 to 100,000: a table of its own, without limits.
void MeasureGrowth(const Session& session, Table& table);
// Opening the parameter dialog on a large file, against reading its keys.
void MeasureParameters(const Session& session, Table& table);
// Memory held after many rounds of loading and letting go.
void MeasureMemory(const Session& session, Table& table);
// The device window: host calls to open it, the time that takes, its ticks, its row loops, and what
// a thousand of them leave behind.
void MeasureWindowCalls(const Session& session, Table& table);
void MeasureWindowOpening(const Session& session, Table& table);
void MeasureWindowTicks(const Session& session, Table& table);
void MeasureWindowLoops(const Session& session, Table& table);
void MeasureWindowRounds(const Session& session, Table& table);
// Opening value editors: calls of the host, and a long enumeration against a bare combo box.
void MeasureEditors(const Session& session, Table& table);
// Size and imports of the DLL.
void MeasureModuleFile(const Session& session, Table& table);

}  // namespace quillon::benchmarks
