// The FRU block at the end of both sensor tables, as columns for the scope of QMV_COLUMN. The length of the ID string
// is named FRUIDStrLen there, since the sensor has an IdStrLen of its own. The two entity fields of the block have no
// column: they repeat the sensor's.
#ifndef QMV_SDR_EMBEDDED_FRU_H
#define QMV_SDR_EMBEDDED_FRU_H

#define QMV_EMBEDDED_FRU                                                                                           \
  QMV_COLUMN(FruRecord.FruIDSlaveAddr), QMV_COLUMN(FruRecord.DeviceAccessAddr), QMV_COLUMN(FruRecord.LUNBusID),    \
      QMV_COLUMN(FruRecord.ChannelNumber), QMV_COLUMN(FruRecord.IDStrLen), QMV_COLUMN(FruRecord.DevIdStr),         \
      QMV_COLUMN(FruRecord.ChassisSerNumber), QMV_COLUMN(FruRecord.ChassisPartNumber),                             \
      QMV_COLUMN(FruRecord.ChassisCustFields), QMV_COLUMN(FruRecord.ProdSerNumber),                                \
      QMV_COLUMN(FruRecord.ProdPartNumber), QMV_COLUMN(FruRecord.ProdMfrName), QMV_COLUMN(FruRecord.BrdSerNumber), \
      QMV_COLUMN(FruRecord.BrdPartNumber), QMV_COLUMN(FruRecord.BrdMfrName), QMV_COPY_OF(5, FruRecord.EntityID),   \
      QMV_COPY_OF(6, FruRecord.EntityInst)

#endif
