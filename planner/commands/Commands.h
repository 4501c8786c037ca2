#pragma once

namespace biwplan {

class CommandTable;

// Each adds the commands of one subject to the last group of the table.
void AddDocumentCommands(CommandTable& ioTable);
void AddHistoryCommands(CommandTable& ioTable);
void AddNewCommand(CommandTable& ioTable);
void AddShowCommand(CommandTable& ioTable);
void AddListCommands(CommandTable& ioTable);
void AddAssignmentCommands(CommandTable& ioTable);
void AddQuestionCommands(CommandTable& ioTable);
void AddGestureCommands(CommandTable& ioTable);
void AddRemoveActivityCommand(CommandTable& ioTable);
void AddLinkCommands(CommandTable& ioTable);
void AddAssemblyCommands(CommandTable& ioTable);
void AddNavigationCommands(CommandTable& ioTable);
void AddPartsAtCommands(CommandTable& ioTable);
void AddValidationCommands(CommandTable& ioTable);
void AddCheckCommand(CommandTable& ioTable);
void AddFlowCommand(CommandTable& ioTable);
void AddViewCommands(CommandTable& ioTable);
void AddSceneCommands(CommandTable& ioTable);
void AddExternalCommands(CommandTable& ioTable);
void AddCycleTimeCommand(CommandTable& ioTable);
void AddShellCommands(CommandTable& ioTable);

}  // namespace biwplan
