/// @file
/// Everything that the library exports. C++17; standard headers only.
///
/// The library reads what photos say about themselves by running two command-line tools, exiv2.exe
/// and exiftool.exe, which lie beside each other or beside the library. It starts no thread of its
/// own: results come back as return values or through callbacks that are called synchronously, on
/// the calling thread. Any thread may call any function, save `initialize` of each namespace, which
/// comes first. There are no time limits: a tool that hangs blocks its caller.
///
/// Paths should be absolute: the tools take a relative one that begins with a hyphen for an option.
/// Texts are UTF-8 bytes unless said otherwise. Failures are logged through the host's logger and
/// reported as `false`, empty results, sentinel values or a callback that isn't called. The only
/// exceptions that reach a caller are std::bad_alloc, what a callback itself raises, and
/// std::bad_function_call for an empty callback that has to be called; a function that lets another
/// one pass says so.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <vector>

#if defined(_WIN32) && !defined(EXIV2_WRAPPER_STATIC)
#if defined(EXIV2_WRAPPER_BUILDING)
#define EXIV2_WRAPPER_API __declspec(dllexport)
#else
#define EXIV2_WRAPPER_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define EXIV2_WRAPPER_API __attribute__((visibility("default")))
#else
#define EXIV2_WRAPPER_API
#endif

/// Metadata of photos through exiv2.exe.
namespace exiv2_wp {

/// Finds exiv2.exe in `dir`, or beside this library when `dir` is empty, and proves it by one run
/// with --version. True when that succeeded; every other function of this namespace needs it once,
/// and nothing may run in another thread meanwhile.
///
/// May be called again. A `dir` that is no directory leaves a tool that was found earlier in use; a
/// directory without a tool that starts leaves none.
EXIV2_WRAPPER_API bool initialize(const std::filesystem::path& dir);

/// What one photo says about its taking. The order of the fields is part of the interface.
struct SExivMetadataInfo {
    float iso = -1.0F;              ///< ISO speed; -1: unknown
    float exposureTime = -1.0F;     ///< seconds; -1: unknown
    float focalLength = -1.0F;      ///< mm; -1: unknown
    float fNumber = -1.0F;          ///< F-number; -1: unknown
    float focalLength35mm = -1.0F;  ///< 35 mm equivalent focal length, mm; -1: unknown
    float exposureBias = -999.0F;   ///< EV; -999: unknown, since -1 EV is a bias
    bool isApple = false;           ///< the maker is "apple" in any letter case, and nothing else
    float lensFocalMin = -1.0F;     ///< shortest focal length of the lens, mm; 0: unknown
    float lensFocalMax = -1.0F;     ///< longest focal length of the lens, mm; 0: unknown
    float lensApertureAtFocalMin = -1.0F;  ///< smallest F-number at the shortest; 0: unknown
    float lensApertureAtFocalMax = -1.0F;  ///< smallest F-number at the longest; 0: unknown
    std::int32_t bitsPerSample = 0;        ///< 0: unknown
    std::int32_t orientation = 0;          ///< Exif orientation, 1 to 8; 0: unknown; not checked
    std::int32_t meteringMode = -1;        ///< Exif metering mode; -1: unknown
    std::int32_t lightSource = -1;         ///< Exif light source; -1: unknown
    std::int32_t whiteBalance = -1;        ///< Exif white balance; -1: unknown
    std::string cameraMaker;       ///< "Unknown Camera Maker" when not plain ASCII; empty: unknown
    std::string cameraModel;       ///< "Unknown Camera Model" when not plain ASCII; empty: unknown
    std::string lensMaker;         ///< "Unknown Lens Maker" when not plain ASCII; empty: unknown
    std::string reservedText;      ///< always empty
    std::string lensModel;         ///< empty: unknown, or not plain ASCII
    std::string dateTimeOriginal;  ///< date and time of capture as the file has it; empty: unknown
    std::string dateTimeIso;       ///< the same in the form 2021-07-04T18:30:05+02:00, without the
                                   ///< offset when none is known; empty: unknown or malformed
    float rating = 0.0F;           ///< stars as a rule, -1 for rejected; 0: none
};

/// Calls `callback` once with the summary of `file`; not at all when the file has no usable
/// metadata, doesn't exist or can't be read. The first question about a file costs two tool runs;
/// the answer serves later ones, those of the readers below too, and failures are remembered as
/// well. It stays the same though the file changes, until some 200 other files have been asked
/// about. Paths that differ only in the case of ASCII letters are one file's.
///
/// Raises std::out_of_range when the tool's short summary of `file` has a line for the lens name,
/// the focal length or the subject distance that ends in its colon. That isn't remembered: the next
/// call asks the tool again. Callers that waited for this one meanwhile get no callback.
EXIV2_WRAPPER_API void createImageMetadata(
    const std::filesystem::path& file,
    const std::function<void(const SExivMetadataInfo&)>& callback);

/// Reads the metadata of the files at the front of a list ahead of the questions about them, and
/// returns how many files at the front are known when it returns: those who ask about them then
/// wait for no tool. Without metadata is known too. At most as many are read as are kept side by
/// side, some 200; who has a longer list asks about those and calls again with the rest.
///
/// An exiv2.exe that knows the call reads them all in one run, many times faster than one by one;
/// any other reads them one by one. The answers are the same either way, and so are the log lines.
/// A caller of another function who asks about one of the files meanwhile gets its answer as soon
/// as it is there. Files that another thread is reading are waited for at the end.
///
/// 0 for an empty list, without a tool, and when the first file can't be known: a file about which
/// the other functions raise an exception ends the front, without one. So go on behind a file that
/// was asked about, whatever this returns.
EXIV2_WRAPPER_API std::size_t readAhead(const std::vector<std::filesystem::path>& files);

/// Calls `onOrientation` once with the Exif orientation of `file` as the file has it: 1 to 8 as a
/// rule, but not checked. Not at all when the file gives none that is a 32-bit number. Raises as
/// createImageMetadata does.
EXIV2_WRAPPER_API void readExiv2Orientation(const std::filesystem::path& file,
                                            const std::function<void(int)>& onOrientation);

/// True for a photo of one of a few early digital cameras (Canon EOS-1D and EOS-1Ds, Kodak
/// EOS D2000C and EOS DCS 1B) whose raw files look like TIFF images. The camera's model alone
/// decides, whatever kind of file it is. False, too, when the file has no usable metadata. Raises
/// as createImageMetadata does.
EXIV2_WRAPPER_API bool isTiffRaw(const std::filesystem::path& file);

/// The lens of one photo and how it was set.
struct SLensInfo {
    std::string lensName;           ///< as exiv2.exe names the lens; empty: unknown
    float focalLength = -1.0F;      ///< mm; -1: unknown
    float focalLength35mm = -1.0F;  ///< 35 mm equivalent focal length, mm; negative: unknown
    float subjectDistance = -1.0F;  ///< at most 10000; what exiv2.exe prints is taken for a step
                                    ///< on a logarithmic scale (0: 0.01, 0.8: 1); -1: unknown
    float fNumber = -1.0F;          ///< F-number; -1: unknown
    std::int32_t lensId = -1;       ///< the maker's number for the lens; -1: unknown
};

/// Focus and sensor values of one photo.
struct SMetadataExiv {
    float focusDistance = -1.0F;    ///< metres, when the maker counts centimetres; -1: unknown
    float focalLength35mm = -1.0F;  ///< 35 mm equivalent focal length, mm; -1: unknown
    float focalPlaneXResolution = -1.0F;  ///< pixels a unit across; -1: unknown
    float focalPlaneYResolution = -1.0F;  ///< pixels a unit down; -1: unknown
    float exposureBias = -999.0F;         ///< EV; -999: unknown, since -1 EV is a bias
    std::int32_t bitsPerSample = -1;      ///< -1: unknown
};

/// Reads lens and focus values of `file`. Calls `onLens` once, then `onTag` once for each tag that
/// the file has, then `onMetadata` once; nothing at all when the file has no usable metadata.
///
/// A 35 mm focal length that the lens data lack is the focal length times the crop factor of `make`
/// and `model` (getCropFactor); it is negative when the focal length is unknown.
///
/// Raises as createImageMetadata does.
EXIV2_WRAPPER_API void readExiv2Info(const std::filesystem::path& file, const std::string& make,
                                     const std::string& model,
                                     const std::function<void(const SLensInfo&)>& onLens,
                                     const std::function<void(const SMetadataExiv&)>& onMetadata,
                                     const std::function<void()>& onTag);

/// Exposure values of one photo for lists of many. Each is null when the file lacks it or it can't
/// be read; whoever holds the record owns its values.
struct exivBatchValue {
    std::unique_ptr<double> apertureValue;          ///< APEX
    std::unique_ptr<double> fNumber;                ///< F-number
    std::unique_ptr<std::int32_t> exposureProgram;  ///< Exif exposure program
    std::unique_ptr<double> focalLength;            ///< mm
    std::unique_ptr<double> shutterSpeedValue;      ///< APEX
    std::unique_ptr<double> exposureBiasValue;      ///< EV
    std::unique_ptr<std::int32_t> isoSpeedRatings;  ///< ISO speed
    std::unique_ptr<double> exposureTime;           ///< seconds
    std::unique_ptr<std::int32_t> orientation;      ///< Exif orientation, not checked
    std::unique_ptr<std::string> dateTimeOriginal;  ///< as the file has it; may be empty
    std::unique_ptr<std::string> dateTime;          ///< as the file has it; may be empty
};

/// The exposure values of `file`; all null when it has no usable metadata. Raises as
/// createImageMetadata does.
EXIV2_WRAPPER_API exivBatchValue readExiv2Win(const std::filesystem::path& file);

/// How much of a preview isn't picture, as the tool tells it.
struct TopBottomOffset {
    std::int64_t top = 0;     ///< rows above the picture
    std::int64_t bottom = 0;  ///< rows below the picture
};

/// Has exiv2.exe extract a preview of `file` that is at least `firstSize` or `secondSize` pixels
/// large, whichever is more (a size below 1 counts as 1: the size asked for is never less), and
/// hands its bytes to one of two callbacks. Returns what that callback returned.
///
/// `format` (UTF-8) tells the tool what kind of file it is; empty: the file's extension.
/// `offset` is written as soon as the tool has told it, even if the call fails then.
/// The callbacks, in the order of their calls:
/// - `onSize(width, height, size asked for)`, the preview's size in pixels;
/// - `onNotify(value)`, only for a value above 0, which the tool passes to the host;
/// - `onPlainPayload(bytes, count, offset)`, or, as the tool chooses,
///   `onSizedPayload(bytes, count, width, rows between the two offsets, offset, size asked for)`.
/// The bytes live only during the call.
///
/// False, without a call of `onSize`, when there is no preview or the tool fails. Such a failure is
/// logged, a header that can't be read in a DNG apart, and remembered: the same request fails at
/// once from then on, in silence. At most 1000 requests are remembered; when the next fails, some
/// 200 of them are forgotten. What is remembered tells files apart by their paths without regard to
/// ASCII letter case, with the first characters overwritten by both sizes: paths that differ only
/// there share their failures. A callback's false isn't remembered.
///
/// Raises std::range_error for a `format` that is no valid UTF-8.
EXIV2_WRAPPER_API bool readExiv2Thumbnail(
    const std::filesystem::path& file, const std::string& format, int firstSize, int secondSize,
    TopBottomOffset& offset, const std::function<void(int, int, int)>& onSize,
    const std::function<void(int)>& onNotify,
    const std::function<bool(const unsigned char*, std::uint64_t, const TopBottomOffset&)>&
        onPlainPayload,
    const std::function<bool(const unsigned char*, std::uint64_t, int, int, const TopBottomOffset&,
                             int)>& onSizedPayload);

/// Brings a camera's name into the form under which differently written names compare equal:
/// A to Z in lower case, no blanks, double quotes and slashes. Other bytes are kept.
EXIV2_WRAPPER_API void CamerasProfiles_canonizeName(std::string& name);

/// The same for a lens: the camera's form without hyphens.
EXIV2_WRAPPER_API void ImageLens_canonizeName(std::string& name);

/// The crop factor of a camera: 1 for a full-frame sensor, more for a smaller one, and 1 for a
/// camera that isn't known. `make` and `model` are joined as they are and compared in the form of
/// ImageLens_canonizeName, so it doesn't matter how the name is split between them.
EXIV2_WRAPPER_API float getCropFactor(const std::string& make, const std::string& model);

/// Reads single tags of one file by their keys, for example Exif.Image.Orientation.
///
/// The file's metadata is fetched once, by the constructor; later changes of the file don't show.
/// Only the raw bytes and the interpreted number are read anew by each call, which costs a tool
/// run. Any number of threads may call the functions of one reader.
///
/// A key is UTF-8 and compared exactly; a null or empty one finds nothing. What isn't found, or
/// lies outside the range of the wanted type, is answered by false or 0; outputs are then left as
/// they were, save where said otherwise. An element's index counts from 0.
class EXIV2_WRAPPER_API ExivReader {
public:
    /// `file` is a narrow path: UTF-8 on Windows when the C locale's code page is UTF-8, otherwise
    /// in the code page of the file functions; elsewhere the path's bytes. Raises nothing but
    /// std::bad_alloc: whatever goes wrong is logged, and the reader then finds nothing.
    explicit ExivReader(const std::string& file);
    ~ExivReader();
    ExivReader(const ExivReader&) = delete;
    ExivReader& operator=(const ExivReader&) = delete;

    /// One XMP property.
    struct XMPData {
        std::string ns;     ///< the URI of its namespace; empty: unknown prefix
        std::string name;   ///< its path, for example History[1]/stEvt:action
        std::string value;  ///< its value in text
    };

    /// The value in text.
    bool getRawExifTag(const char* key, std::string& out) const;

    /// One element as numerator and denominator; an integer's denominator is 1.
    bool getRawExifTag(const char* key, int index,
                       std::pair<std::uint32_t, std::uint32_t>& out) const;
    /// The same as signed numbers.
    bool getRawExifTag(const char* key, int index,
                       std::pair<std::int32_t, std::int32_t>& out) const;

    /// One element as a number; a rational is divided and truncated towards 0, and one with the
    /// denominator 0 counts as its numerator. `out` may be null: false.
    bool getRawExifTag(const char* key, int index, std::uint32_t* out) const;

    /// The bytes of the value, read by a tool run. `*data` becomes a new buffer of `*size` bytes,
    /// which is the caller's: it comes from the scalar `operator new` and goes back through
    /// `operator delete(void*)`, so host and library must share one runtime library. On failure
    /// `*size` is 0 and `*data` null; a null `size` or `data` is a failure.
    /// Raises std::range_error for a key that is no valid UTF-8.
    bool getRawExifTag(const char* key, std::int32_t* size, unsigned char** data) const;

    /// Up to `count` elements, from the first on, into an array of the caller's; stops at the first
    /// that is out of range. Returns the number written. Numbers are divided as above, pairs made
    /// as above. `out` may be null: 0.
    int getRawExifTag(const char* key, std::uint32_t* out, int count) const;
    /// The same as signed 16-bit numbers.
    int getRawExifTag(const char* key, std::int16_t* out, int count) const;
    /// The same as pairs.
    int getRawExifTag(const char* key, std::pair<std::uint32_t, std::uint32_t>* out,
                      int count) const;

    /// The number at a place of the interpreted value, as exiv2.exe prints it for readers, by a
    /// tool run. Only numbers may stand before it. `out` may be null: false. Raises
    /// std::range_error for a key that is no valid UTF-8.
    bool getInterpretedRawExifTag(const char* key, int index, std::uint32_t* out) const;

    /// Every XMP property, sorted by key.
    [[nodiscard]] std::vector<XMPData> getXMPData() const;

private:
    struct State;
    State* state_;  // owned; plain, so that the class looks the same to every compiler
};

}  // namespace exiv2_wp

/// Metadata of photos through exiftool.exe, which is started once and then stays. Requests from
/// several threads are served one after another. Paths and texts reach the tool as lines, so none
/// may hold a line feed: the tool would take what follows for another argument. Nor does it take a
/// relative path that begins with # for a path.
namespace exiftool {

/// Starts exiftool.exe in `exiftoolDir`, to stay until `uninitialize` or the host's end, killed
/// hosts included. True when it runs. Only the first call of this namespace in the process's life
/// starts it: later ones ignore their argument and say whether it runs, and a tool that was asked
/// for something, or uninitialised, before it was initialised never runs.
///
/// On Windows the tool's path is not quoted, and one with non-ASCII characters is started by its
/// 8.3 form where the volume has one.
EXIV2_WRAPPER_API bool initialize(const std::filesystem::path& exiftoolDir);

/// Asks the tool to quit. It isn't started again; later requests return empty results at once.
EXIV2_WRAPPER_API void uninitialize();

/// Asks the tool for tags of `file`. `arguments` are the tool's own, parted by blanks, for example
/// "-Lens -LensID"; an argument can't hold a blank. The result maps the tags' short names to
/// printed values, UTF-8 both; it is empty when the tool doesn't run.
EXIV2_WRAPPER_API std::unordered_map<std::string, std::string> readTags(
    const std::filesystem::path& file, const std::string& arguments);

/// A readable name of the lens that took `file`, plain ASCII; the first of several candidates.
/// Empty: unknown, or not plain ASCII.
EXIV2_WRAPPER_API std::string getLensPrettyName(const std::filesystem::path& file);

/// What an export sets in the file that it has written.
struct ExportMetadataParameters {
    std::int32_t xResolution = 0;     ///< written only when all three are at least 1
    std::int32_t yResolution = 0;     ///< vertical resolution, in the unit
    std::int32_t resolutionUnit = 0;  ///< Exif resolution unit: 2 inch, 3 centimetre
    std::string software = {};        ///< name of the writing software, UTF-8; empty: not written
    float rating = -100.0F;           ///< written only when above -2
};

/// Copies the metadata of `source` into `destination`, an image that exists, and sets the values
/// of the export. Orientation becomes 1; thumbnail, pixel dimensions and the Exif colour space
/// aren't carried over. A PNG gets XMP. A JPEG gets maker notes only up to 60000 bytes, and none
/// from a file of which the tool warns. True when the tool confirmed that it updated the file;
/// otherwise the file is as the tool left it.
EXIV2_WRAPPER_API bool copyMetadata(const std::filesystem::path& source,
                                    const std::filesystem::path& destination,
                                    ExportMetadataParameters parameters);

/// The same with horizontal and vertical resolution, resolution unit and software; no rating.
EXIV2_WRAPPER_API bool copyMetadata(const std::filesystem::path& source,
                                    const std::filesystem::path& destination,
                                    std::tuple<int, int, int, std::string> parameters);

}  // namespace exiftool
