#pragma once

#include <string>

namespace ui {

/// Interface that opens a document with the program that the desktop has for it. OpenDocument uses one
/// implementation at a time: the desktop's, or one that records (tests).
class DocumentOpener {
  public:
    virtual ~DocumentOpener() = default;

    /// Opens the file or folder `file`, or the page at a web address, and does not wait for its program.
    /// Greater than 32 on success, else a reason in the shell's numbers: 2 not found, 31 no program for it.
    virtual int Open(const std::string& file, const std::string& parameters, const std::string& verb) = 0;
};

/// Puts another opener in place (null: the desktop) and returns the one before. The caller keeps ownership.
DocumentOpener* SetDocumentOpener(DocumentOpener* opener);

/// Opens a document with the verb "Open". Parameters matter only where the desktop knows them.
int OpenDocument(const std::string& file, const std::string& parameters = {});

/// The same with the verb "open".
int OpenDocumentLower(const std::string& file, const std::string& parameters = {});

} // namespace ui
