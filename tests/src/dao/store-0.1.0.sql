-- SPDX-License-Identifier: Apache-2.0
-- A store that version 0.1.0 has written, as text.
BEGIN TRANSACTION;
CREATE TABLE CONTACT (contactId VARCHAR,loginName VARCHAR,salutation VARCHAR,firstName VARCHAR,name VARCHAR,latinFirstName VARCHAR,latinName VARCHAR,language VARCHAR,timezone VARCHAR,officePhone VARCHAR,officePhoneCan VARCHAR,attendant VARCHAR,colleague VARCHAR,assistant VARCHAR,email VARCHAR,fax VARCHAR,faxCan VARCHAR,voicemail VARCHAR,personalHome VARCHAR,personalHomeCan VARCHAR,personalMobile VARCHAR,personalMobileCan VARCHAR,personalFax VARCHAR,personalFaxCan VARCHAR,personalEmail VARCHAR,collaborationId VARCHAR,isPreviewed BOOLEAN,isPrivate BOOLEAN,type INTEGER,photo VARCHAR,melody VARCHAR,puid varchar(256), lastModificationDate datetime);
INSERT INTO "CONTACT" VALUES('#CONTACT_1#','','','Zoë','Müller','zzooeë','mmuülllleerr','','','0199007700','+33199007700','','','','zoe@example.org','','','','','','0639980102','+33639980102','','','','','false','false',0,'','',NULL,'2026-11-22T10:23:05.370Z');
INSERT INTO "CONTACT" VALUES('#CONTACT_2#','','','','O''Neill','','oo''''nneeiillll','','','8001','8001','','','','','','','','','','','','','','','','true','false',0,'','',NULL,'2026-11-22T10:23:05.402Z');
INSERT INTO "CONTACT" VALUES('#DM_1#','','','','Reception','','rreecceeppttiioonn','','','8100','8100','','','','reception@example.org','','','','','','','','','','','','true','false',3,'','',NULL,'2026-11-22T10:23:05.469Z');
CREATE TABLE MISC (contactId VARCHAR,keyName VARCHAR,value VARCHAR);
INSERT INTO "MISC" VALUES('#CONTACT_1#','company','Atelier Brumaire');
CREATE INDEX contact_id_idx ON CONTACT(contactId);
CREATE INDEX type_idx ON CONTACT(type);
CREATE INDEX misc_id_idx ON MISC(contactId,keyName);
CREATE TRIGGER del_on_cascade_trg BEFORE DELETE ON CONTACT FOR EACH ROW BEGIN DELETE from MISC WHERE contactId = OLD.contactId; END;
CREATE TRIGGER update_on_cascade_trg UPDATE OF lastModificationDate ON contact FOR EACH ROW BEGIN DELETE from MISC WHERE contactId = OLD.contactId; END;
CREATE TRIGGER insert_local_MA_contact_trg AFTER INSERT ON CONTACT BEGIN update CONTACT set contactId=('#CONTACT_' || (last_insert_rowid()) || '#') where rowid=last_insert_rowid() and (type='0' or type='5'); end;
CREATE INDEX office_phone_can_idx ON CONTACT(officePhoneCan);
CREATE INDEX fax_can_idx ON CONTACT(faxCan);
CREATE INDEX personal_home_can_idx ON CONTACT(personalHomeCan);
CREATE INDEX personal_mobile_can_idx ON CONTACT(personalMobileCan);
CREATE INDEX personal_fax_can_idx ON CONTACT(personalFaxCan);
CREATE INDEX email_idx ON CONTACT(upper(email));
CREATE INDEX collaboration_id_idx ON CONTACT(upper(collaborationId));
CREATE INDEX exact_collaboration_id_idx ON CONTACT(collaborationId);
CREATE INDEX preview_idx ON CONTACT(isPreviewed, contactId);
CREATE INDEX latin_name_idx ON CONTACT(latinName COLLATE NOCASE);
CREATE INDEX no_latin_name_idx ON CONTACT(latinName) WHERE latinName='';
CREATE INDEX photo_idx ON CONTACT(photo);
COMMIT;
