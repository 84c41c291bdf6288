#pragma once

#include <QString>

namespace quillon::reference {

// CropLookup from the crop list of CodeLookup ("Crop and Weed Species") and
// the profile: a crop's data folder from its "<code>D" row and its cultivar
// file from its "M<code>" model row. A crop without a cultivar file gets no
// row. A crop code listed twice is told to the user and passed over; any
// other failure ends the program.
void CreateCropLookup();

// CropCodesLookup from the cultivar file of each crop in GenotypeFolder,
// plus the fallow cultivar. A missing file is passed over silently; a file
// that fails while it is read is told to the user and the next one follows.
void CropCodesLookup();

// The cultivar file named by a crop's model row: for a path ending in
// "EXE I", the crop code, characters 3 to 8 of the last fourteen and ".CUL";
// otherwise, when the path has a blank at position 5 or later and more than
// three characters after its last blank, the crop code followed by those
// characters from the third on and ".CUL"; else "".
QString cultivarFileOfModel(const QString& cropCode, const QString& path);

// The last folder name of a crop's data row: the text after the last
// separator, "" when there is none.
QString folderOfData(const QString& path);

} // namespace quillon::reference
