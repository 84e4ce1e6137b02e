#include <iostream>

#include "exiv2_wrapper/exiv2_wrapper.h"

// export TOOLS PHOTO EXPORTED: EXPORTED, which has been written already, gets the metadata of
// PHOTO.
int main(int argc, char** argv) {
    if (argc != 4 || !exiftool::initialize(argv[1])) {
        return 2;
    }
    exiftool::ExportMetadataParameters parameters;
    parameters.xResolution = 300;
    parameters.yResolution = 300;
    parameters.resolutionUnit = 2;  // inch
    parameters.software = "Editor 1.0";
    parameters.rating = 4.0F;
    const bool isCopied = exiftool::copyMetadata(argv[2], argv[3], parameters);
    std::cout << (isCopied ? "metadata copied\n" : "the exported file is without metadata\n");
    exiftool::uninitialize();
    return isCopied ? 0 : 1;
}
