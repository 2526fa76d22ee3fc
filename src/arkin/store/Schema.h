#pragma once

#include "arkin/store/Database.h"

#include <span>
#include <string>
#include <vector>

namespace zn::arkin {

/// One step of an area's schema: statements that lead from the step before to this one. Steps are never changed once
/// they were released; a change of tables is a new step at the end.
struct SchemaStep {
    std::span<const char* const> statements;
    /// Tables whose rows get a checksum (`zn::sqliteSumRows`), or a new one after the statements gave them columns.
    std::span<const char* const> summed = {};
};

/// The tables of one area of the host ("vault", "tasks"), step by step.
struct SchemaArea {
    const char* name;
    std::span<const SchemaStep> steps;
};

/// Brings the area's tables to its last step, in one transaction; safe when several processes do it at once.
/// Raises `StatusError` E_ARK_DATABASE if the database was written by a newer program.
void applySchema(Database& database, const SchemaArea& area);

/// Whether the database has gone all of the area's steps.
bool isUpToDate(Database& database, const SchemaArea& area);

/// Tables that the area's steps have made, as far as the database has gone them, and that aren't there.
std::vector<std::string> missingTables(Database& database, const SchemaArea& area);

/// Tables and indexes of the area whose columns aren't those that its steps make, as damage leaves them. For a database
/// that went all steps.
std::vector<std::string> changedTables(Database& database, const SchemaArea& area);

/// The area's tables whose rows have sums.
std::vector<std::string> summedTablesOf(const SchemaArea& area);

/// A sentence for each row of the area's summed tables that isn't as it was written.
std::vector<std::string> changedRows(Database& database, const SchemaArea& area);

/// Tables of the vault: folders, files, versions, cards, references, rights.
extern const SchemaArea vaultSchema;

} // namespace zn::arkin
