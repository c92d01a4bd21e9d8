/* Copyright the qmv authors. SPDX-License-Identifier: MIT */

/*
 * qmv/roles.h - role-based authorization.
 * (*) marks a get-all that does not clear *records first: it stays without rows, and when counting or compiling fails.
 * The conventions and the shapes named here stand in qmv.h.
 */
#ifndef QMV_ROLES_H
#define QMV_ROLES_H

#include "qmv/core.h"

/* CIM_RoleBasedManagementCapabilities, table "role_based_mgt_capabilities". Key: InstanceID. */
typedef struct role_based_mgt_capabilities_rec {
  char InstanceID[256];
  int32_t SharedPrivilege;              /* SharedPrivilegeSupported; flag: roles can share a privilege */
  char ActivitiesSupported[256];        /* list */
  char ActivityQualifierSupported[256]; /* ActivityQualifiersSupported, list */
  char SupportedMethods[256];           /* list */
  char QualifierFormatsSupported[256];  /* list */
  char ElementName[256];
} role_based_mgt_capabilities_rec;

/* CIM_Privilege, table "privilege". Key: InstanceID. */
typedef struct privilege_rec {
  char InstanceID[256];
  int32_t PrivilegeGranted;     /* 1 granted, 0 denied */
  char Activities[256];         /* list; 2 create, 3 delete, 4 detect, 5 read, 6 write, 7 execute */
  char ActivityQualifiers[256]; /* list; what the activities are limited to */
  char QualifierFormats[256];   /* list; how ActivityQualifiers is to be read */
  int32_t RepresentsAuthRights; /* RepresentsAuthorizationRights; flag: it gives the right to grant */
  char ElementName[256];
} privilege_rec;

/* CIM_Role, table "role". Key: Name. */
typedef struct role_rec {
  char CreationClassName[256];
  char Name[256];
  char RoleCharacteristics[256]; /* list; 2 static, 3 opaque */
  char CommonName[256];
  char ElementName[256];
} role_rec;

/* The role of an identity, table "assign_role". Key: IdentityInstanceID. */
typedef struct assign_role_rec {
  char IdentityInstanceID[256]; /* CIM_Identity.InstanceID */
  char RoleCLPName[256];        /* the role's name in the command-line protocol */
} assign_role_rec;

QMV_BEGIN_DECLS

/* Reads all capabilities. Get-all. (*) */
QMV_API int32_t db_get_all_RBMcapabilities(struct sqlite3* db, int32_t* count,
                                           role_based_mgt_capabilities_rec** records) QMV_NOEXCEPT;

/* Reads the capabilities with that key. Get-one into the caller's record. */
QMV_API int32_t db_get_RBMcapabilities(struct sqlite3* db, const char* InstanceID,
                                       role_based_mgt_capabilities_rec* record) QMV_NOEXCEPT;

/* Stores capabilities. Set, by InstanceID. */
QMV_API int32_t db_set_RBMcapabilities(struct sqlite3* db, const role_based_mgt_capabilities_rec* record) QMV_NOEXCEPT;

/* Reads all privileges. Get-all. (*) */
QMV_API int32_t db_get_all_privilege(struct sqlite3* db, int32_t* count, privilege_rec** records) QMV_NOEXCEPT;

/* Reads the privilege with that key. Get-one into the caller's record. */
QMV_API int32_t db_get_privilege(struct sqlite3* db, const char* InstanceID, privilege_rec* record) QMV_NOEXCEPT;

/* Stores a privilege. Set, by InstanceID. */
QMV_API int32_t db_set_privilege(struct sqlite3* db, const privilege_rec* record) QMV_NOEXCEPT;

/* Reads all roles. Get-all. (*) */
QMV_API int32_t db_get_all_role(struct sqlite3* db, int32_t* count, role_rec** records) QMV_NOEXCEPT;

/* Reads the role with that name and class. Get-one into the caller's record. */
QMV_API int32_t db_get_role(struct sqlite3* db, const char* Name, const char* CreationClassName,
                            role_rec* record) QMV_NOEXCEPT;

/* Stores a role. Set, by Name alone, whatever the row's CreationClassName. */
QMV_API int32_t db_set_role(struct sqlite3* db, const role_rec* record) QMV_NOEXCEPT;

/* Reads all assignments. Get-all. (*) */
QMV_API int32_t db_get_all_assign_role(struct sqlite3* db, int32_t* count, assign_role_rec** records) QMV_NOEXCEPT;

/* Reads the assignment of that identity. Get-one into the caller's record. */
QMV_API int32_t db_get_assign_role(struct sqlite3* db, const char* IdentityInstanceID,
                                   assign_role_rec* record) QMV_NOEXCEPT;

/* Stores an assignment. Set, by IdentityInstanceID. */
QMV_API int32_t db_set_assign_role(struct sqlite3* db, const assign_role_rec* record) QMV_NOEXCEPT;

QMV_END_DECLS

#endif
