#pragma once

/// The language version (__cplusplus) in which the exported header was compiled alone.
long languageOfTheExportedHeader();
