#pragma once

#include <string>
#include <string_view>

#include "tamarok/string_array.h"

#pragma GCC visibility push(default)

namespace tamarok {

/// Parameter files and the action protocol. The class has no state. Files are those of the thread's platform
/// (`Platform::files`, files.h), whose failures all operations but `WriteReport` raise.
///
/// A parameter file has one parameter a line, "key = value". Blanks at both ends of the line, of the key and of the
/// value do not count; tabs do. An empty line, and one that begins with "%", is skipped. Keys are compared without
/// regard to case. Only the key DATABASENAME may occur more than once: its values form a list, the current database
/// first. LF and CRLF both end a line.
///
/// A file that is valid UTF-8 is read and written as UTF-8, any other one as Windows-1252. A byte order mark of UTF-8
/// at the beginning is no part of the first line; it stays. Lines that are written end as the first line of the file
/// does, with CRLF where there is none.
///
/// Parameter files are opened under the numbers 1 and 2 of `Platform::fileNumbers`. Required by the contract: a syntax
/// error leaves number 1 open, so that from then on each operation on a parameter file is error 55, until
/// `fileNumbers.closeAll()` or the end of the platform. Do not correct.
class Comm_Act {
public:
    /// Appends a line to the action protocol, which is made where it does not exist: the texts, the present date and
    /// time by the regional settings, and the user's name with two blanks behind it, joined by "; ". Each line is one
    /// write, so that the lines of several processes do not mix. Line ends within the texts are written as they are.
    /// A failure is shown in a message box (flag 16); the operation then ends normally.
    void WriteReport(std::string_view strModul, std::string_view strName, std::string_view strAction,
                     std::string_view strUserName, std::string_view strProtokolPath) const;

    /// Writes a parameter. A missing file is made.
    ///
    /// - A key without a value is appended, with an empty line behind it.
    /// - A key with a value: its line becomes "Key = value", the key as given here. The file is written anew through
    ///   the temporary file `filename` + "~", which stays. All lines lose the blanks at their ends.
    /// - DATABASENAME with several values: `value` becomes the first one. If it was in the list, it changes places with
    ///   the first one; otherwise it is added, and the first one goes to the end.
    ///
    /// The file keeps its owner, mode and links. A failure, also for want of room, leaves it as it was; at each instant
    /// the file or the temporary file is whole. A link, a folder, or a file of another user in place of the temporary
    /// file is an error, and nothing is touched.
    ///
    /// Required by the contract: with one DATABASENAME line, that line keeps its value and `value` is not stored; after
    /// a line "A =" before "A = 5", the first of them is changed and the second stays. Do not correct.
    ///
    /// Errors before anything is changed: 5 for a line end in key or value, and for a character that the file's code
    /// page does not have; those of `GetExistingParam` but 0x80040203.
    void SaveParam(std::string_view Key, std::string_view value, std::string_view filename) const;

    /// Returns the value of a key; "" if DATABASENAME, in this spelling, has several values.
    /// @param arrValue  receives all values of the key from index 0 on; one element "" if there are none. Empty values
    ///        before the first other one do not count.
    /// Errors: 0x80040201 for a line without "=" that is no comment, with the file and the number of the line;
    /// 0x80040202 for a key with several values; 0x80040203 for a key that is missing or has only empty values.
    std::string GetExistingParam(std::string_view Key, std::string_view filename, StringArray& arrValue) const;

    /// Returns the value of a key; `defaultValue` without the blanks around it, if the key has none or the file does
    /// not exist (errors 0x80040203 and 53). Error 76 for a missing folder, and the other errors of `GetExistingParam`.
    std::string GetParam(std::string_view Key, std::string_view defaultValue, std::string_view filename) const;

    /// Writes the picture formats that the application accepts to `s`, from index 1 on: jpg, gif, bmp, and the
    /// parameter PHOTOESFORMAT of the file `initFile` in the folder `strAPPPath` if it is another one. Errors of
    /// `GetParam`.
    void GetPhotoesFormats(StringArray& s, std::string_view strAPPPath, std::string_view initFile) const;
};

} // namespace tamarok

#pragma GCC visibility pop
